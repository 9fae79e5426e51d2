#include "face_pipeline/haar/cascade_plan.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>

#include "face_pipeline/haar/feature_shape.hpp"
#include "face_pipeline/haar/quick_plan.hpp"

namespace halcyra::haar {
namespace {

// Whole votes add up to less than this in magnitude.
constexpr double kLargestVoteSum = 1073741824.0;

// The part of a window whose contrast is measured.
cv::Rect inner_window(const cv::Size& window) {
  return {1, 1, window.width - 2, window.height - 2};
}

AnyFeature with_corners(const RectFeature& feature, const CornerIndex& index) {
  AnyFeature any{};
  for (std::size_t i = 0; i < feature.size(); ++i) {
    const std::array<Corner, 4> corners = corners_of(feature[i].area);
    std::transform(corners.begin(), corners.end(), std::begin(any.corners[i]), index);
    any.weights[i] = feature[i].weight;
  }
  return any;
}

// A power of two. Votes times this, rounded, are whole votes.
double vote_unit(const CascadeStage& stage) {
  double sum = 1.0;
  for (const Stump& stump : stage.stumps) {
    sum += std::max(std::abs(stump.below), std::abs(stump.not_below));
  }
  int exponent = 0;
  std::frexp(kLargestVoteSum / sum, &exponent);
  return std::ldexp(1.0, exponent - 2);
}

std::int32_t whole_votes(float vote, double unit) {
  return static_cast<std::int32_t>(std::lround(static_cast<double>(vote) * unit));
}

std::int32_t limited(double value) {
  return static_cast<std::int32_t>(
      std::clamp(value, -2.0 * kLargestVoteSum + 1.0, 2.0 * kLargestVoteSum - 1.0));
}

// Each vote is rounded by half a unit at most; one unit more covers the rounding of the doubles,
// which is smaller by far.
void set_limits(PlannedStage& planned, const CascadeStage& stage, double unit) {
  const double margin = 0.5 * static_cast<double>(stage.stumps.size()) + 1.0;
  const double threshold = static_cast<double>(stage.threshold) * unit;
  planned.surely_below = limited(std::floor(threshold - margin));
  planned.surely_above = limited(std::ceil(threshold + margin));
  planned.threshold = stage.threshold;
}

// The stage's limits for sums to which the stumps from `first` to `last` can still add.
void set_early_limits(PlannedStage& planned, const PlannedStump* first, const PlannedStump* last) {
  double least = 0.0;
  double most = 0.0;
  for (; first != last; ++first) {
    least += std::min(first->gain, 0);
    most += std::max(first->gain, 0);
  }
  planned.early_below = limited(planned.surely_below - most);
  planned.early_above = limited(planned.surely_above - least);
}

class CascadePlanner {
 public:
  CascadePlanner(const StumpCascade& cascade, ScanPlan& plan)
      : index_(cascade.window),
        deviations_(deviations_of(inner_window(cascade.window).size())),
        plan_(plan) {
    plan.deviation_unit = static_cast<float>(deviations_.unit);
    for (const RectFeature& feature : cascade.features) {
      plan.features.push_back(with_corners(feature, index_));
      shaped_.push_back(shape_of(feature));
    }
  }

  void add(const CascadeStage& stage) {
    PlannedStage planned{};
    const double unit = vote_unit(stage);
    planned.first = static_cast<std::int32_t>(plan_.stumps.size());
    planned.first_exact = static_cast<std::int32_t>(plan_.exact.size());
    planned.exact_count = static_cast<std::int32_t>(stage.stumps.size());
    plan_.exact.resize(plan_.exact.size() + stage.stumps.size());
    for (std::uint8_t shape = 0; shape < kShapeCount; ++shape) {
      add_stumps_of(static_cast<FeatureShape>(shape), stage, unit, planned);
      planned.ends[shape] = static_cast<std::int32_t>(plan_.stumps.size());
    }
    set_limits(planned, stage, unit);
    set_early_limits(planned, plan_.stumps.data() + planned.ends[kInverseChecks],
                     plan_.stumps.data() + planned.ends[kAnyShape]);
    plan_.stages.push_back(planned);
    const bool first = plan_.quick_stages.empty();
    add_quick_stage(first ? CascadeStage() : stage, shaped_, deviations_, index_, plan_);
  }

 private:
  void add_stumps_of(FeatureShape shape, const CascadeStage& stage, double unit,
                     PlannedStage& planned) {
    for (std::size_t i = 0; i < stage.stumps.size(); ++i) {
      const Stump& stump = stage.stumps[i];
      if (shape_for(stump) != shape) continue;
      plan_.exact[static_cast<std::size_t>(planned.first_exact) + i] = {
          stump.feature, stump.threshold, stump.below, stump.not_below};
      const std::int32_t not_below = whole_votes(stump.not_below, unit);
      planned.start += not_below;
      PlannedStump added{};
      set_offsets(stump, shape, added);
      added.threshold = stump.threshold;
      added.gain = whole_votes(stump.below, unit) - not_below;
      plan_.stumps.push_back(added);
    }
  }

  // A value that is cut to 16 bits is far beyond most thresholds. Others need the whole value.
  FeatureShape shape_for(const Stump& stump) const {
    constexpr double kCut = 32700.0;
    const double largest_limit =
        std::abs(static_cast<double>(stump.threshold)) * deviations_.largest_inverse;
    return largest_limit < kCut ? shaped_[static_cast<std::size_t>(stump.feature)].shape
                                : kAnyShape;
  }

  void set_offsets(const Stump& stump, FeatureShape shape, PlannedStump& planned) {
    if (shape == kAnyShape) {
      planned.offsets[0] = stump.feature;
      return;
    }
    const Corners& corners = shaped_[static_cast<std::size_t>(stump.feature)].corners;
    std::transform(corners.begin(), corners.begin() + corner_count(shape),
                   std::begin(planned.offsets), index_);
  }

  CornerIndex index_;
  Deviations deviations_;
  ScanPlan& plan_;
  std::vector<ShapedFeature> shaped_;
};

// Windows count only while area * norm < 0.1, with the norm a float and the product a double.
float largest_norm(double area) {
  constexpr double kLimit = 1e-1;
  auto norm = static_cast<float>(kLimit / area);
  while (area * static_cast<double>(norm) < kLimit) norm = std::nextafter(norm, 1.0F);
  while (area * static_cast<double>(norm) >= kLimit) norm = std::nextafter(norm, 0.0F);
  return norm;
}

}  // namespace

ScanPlan plan_cascade(const StumpCascade& cascade) {
  const cv::Rect inner = inner_window(cascade.window);
  ScanPlan plan;
  plan.window = cascade.window;
  const std::array<Corner, 4> corners = corners_of(inner);
  std::transform(corners.begin(), corners.end(), plan.norm_corners.begin(),
                 CornerIndex(cascade.window));
  plan.norm_area = inner.area();
  plan.largest_norm = largest_norm(plan.norm_area);
  CascadePlanner planner(cascade, plan);
  for (const CascadeStage& stage : cascade.stages) planner.add(stage);
  return plan;
}

}  // namespace halcyra::haar
