#include "face_pipeline/haar/quick_plan.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace halcyra::haar {
namespace {

// No window's pixels have a larger standard deviation.
constexpr double kLargestStandardDeviation = 127.5;

// A sum starts at kQuickStart and ends at 32767 at most.
constexpr double kLargestSum = 65534.0;

// For more stumps in a stage, rounding takes too much of the range.
constexpr std::size_t kMostStumps = 30000;

double vote(float value) { return static_cast<double>(value); }

double gain_of(const Stump& stump) { return std::abs(vote(stump.below) - vote(stump.not_below)); }

// Votes of a stage in units that make full use of 16 bits.
struct VoteScale {
  double unit = 0.0;    // 0 if the stage cannot be tested this way; then all windows may pass
  double needed = 0.0;  // the least sum of gains of a window that passes, in units
};

// OpenCV adds up doubles, each sum rounded. The margin covers that many times over.
VoteScale scale_of(const CascadeStage& stage) {
  double least = 0.0;
  double gains = 0.0;
  double magnitudes = 0.0;
  for (const Stump& stump : stage.stumps) {
    least += std::min(vote(stump.below), vote(stump.not_below));
    gains += gain_of(stump);
    magnitudes += std::abs(vote(stump.below)) + std::abs(vote(stump.not_below));
  }
  const auto count = static_cast<double>(stage.stumps.size());
  VoteScale scale;
  if (stage.stumps.size() > kMostStumps || gains == 0.0) return scale;
  scale.unit = (kLargestSum - count) / gains;
  const double margin = 1.0 + scale.unit * count * magnitudes * 0x1p-48;
  scale.needed = (vote(stage.threshold) - least) * scale.unit - margin;
  return scale;
}

// Rounded up.
std::int32_t whole_gain(const Stump& stump, const VoteScale& scale) {
  if (scale.unit == 0.0) return 0;
  return static_cast<std::int32_t>(gain_of(stump) * scale.unit) + 1;
}

std::int32_t twice(std::int32_t number) {
  return static_cast<std::int32_t>((static_cast<std::uint32_t>(number) & 0xFFFFU) * 0x10001U);
}

std::int32_t limited_to_16_bits(double value) {
  return static_cast<std::int32_t>(std::clamp(value, -32768.0, 32767.0));
}

// The limit of a value is the deviation times this, divided by 2^16 and rounded down. It may not be
// less than the value's true limit, the threshold divided by the norm, before it is rounded: then
// no whole number at or below the true limit is above it. So this is rounded up, and by so much
// more as the limit can be too small because
//
//     the deviation is rounded by a half, and the float that it is made from,
//     OpenCV's comparison is one of floats.
//
// May be beyond 16 bits.
double whole_threshold(double threshold, const Deviations& deviations) {
  const double exact = threshold / deviations.unit * 65536.0;
  const double doubt = std::abs(exact) * (0.504 / deviations.least + 4e-7);
  return std::ceil(exact + doubt);
}

QuickAnyStump quick_any_stump(const Stump& stump, const VoteScale& scale,
                              const Deviations& deviations) {
  constexpr double kLargest = 1e30;  // far beyond any value
  const double threshold = std::clamp(vote(stump.threshold) / deviations.unit, -kLargest, kLargest);
  QuickAnyStump quick{};
  quick.feature = stump.feature;
  quick.threshold = static_cast<float>(threshold);
  // As for whole thresholds; and these are not rounded.
  quick.margin = static_cast<float>(0.53 * std::abs(threshold) + 1.0);
  quick.gain = whole_gain(stump, scale);
  quick.gains_below = stump.below > stump.not_below;
  return quick;
}

class QuickStagePlanner {
 public:
  QuickStagePlanner(const CascadeStage& stage, const Deviations& deviations,
                    const CornerIndex& index, ScanPlan& plan)
      : scale_(scale_of(stage)), deviations_(deviations), index_(index), plan_(plan) {}

  // A stump whose limit is beyond 16 bits gets its gain from nearly all windows, and here from all.
  // If its limit is beyond them on the other side, hardly any window gets the gain; the least limit
  // lets a few more have it.
  void add(const Stump& stump, const ShapedFeature& shaped) {
    const bool gains_below = stump.below > stump.not_below;
    const double threshold = vote(stump.threshold) * (gains_below ? 1.0 : -1.0);
    const double whole = whole_threshold(threshold, deviations_);
    if (whole > 32767.0) {
      gains_of_all_ += whole_gain(stump, scale_);
      return;
    }
    QuickStump quick{};
    std::transform(shaped.corners.begin(), shaped.corners.begin() + corner_count(shaped.shape),
                   std::begin(quick.offsets), index_);
    quick.threshold = twice(limited_to_16_bits(whole));
    quick.gain = twice(whole_gain(stump, scale_));
    plan_.quick_stumps.push_back(quick);
  }

  void add_any(const Stump& stump) {
    plan_.quick_any.push_back(quick_any_stump(stump, scale_, deviations_));
    gains_of_any_ += plan_.quick_any.back().gain;
  }

  void set_limits(QuickStage& quick) const {
    const double limit = kQuickStart + std::floor(scale_.needed) - 1.0 - gains_of_all_;
    quick.limit = limited_to_16_bits(limit);
    quick.open_limit = limited_to_16_bits(quick.limit - gains_of_any_);
  }

 private:
  VoteScale scale_;
  const Deviations& deviations_;
  const CornerIndex& index_;
  ScanPlan& plan_;
  double gains_of_all_ = 0.0;
  double gains_of_any_ = 0.0;
};

}  // namespace

Deviations deviations_of(const cv::Size& measured) {
  constexpr double kLargest = 32700.0;
  const double area = measured.area();
  Deviations deviations;
  deviations.largest_inverse = area * kLargestStandardDeviation;
  deviations.unit = static_cast<float>(std::min(1.0, kLargest / deviations.largest_inverse));
  // Windows with enough contrast have a norm below 0.1 / area.
  deviations.least = 10.0 * area * deviations.unit - 1.0;
  return deviations;
}

void add_quick_stage(const CascadeStage& stage, const std::vector<ShapedFeature>& shapes,
                     const Deviations& deviations, const CornerIndex& index, ScanPlan& plan) {
  QuickStagePlanner planner(stage, deviations, index, plan);
  QuickStage quick{};
  quick.first = static_cast<std::int32_t>(plan.quick_stumps.size());
  quick.first_any = static_cast<std::int32_t>(plan.quick_any.size());
  for (int shape = 0; shape < kAnyShape; ++shape) {
    for (const Stump& stump : stage.stumps) {
      const ShapedFeature& as_is = shapes[static_cast<std::size_t>(stump.feature)];
      const bool gains_below = stump.below > stump.not_below;
      if ((gains_below ? as_is.shape : negated(as_is.shape)) != shape) continue;
      planner.add(stump, gains_below ? as_is : negated(as_is));
    }
    quick.ends[shape] = static_cast<std::int32_t>(plan.quick_stumps.size());
  }
  for (const Stump& stump : stage.stumps) {
    if (shapes[static_cast<std::size_t>(stump.feature)].shape == kAnyShape) planner.add_any(stump);
  }
  quick.end_any = static_cast<std::int32_t>(plan.quick_any.size());
  planner.set_limits(quick);
  quick.fewest_windows = 1;
  plan.quick_stages.push_back(quick);
}

}  // namespace halcyra::haar
