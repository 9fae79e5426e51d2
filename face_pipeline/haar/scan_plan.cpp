#include "face_pipeline/haar/scan_plan.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <map>

#include "face_pipeline/haar/entry_offsets.hpp"
#include "face_pipeline/haar/feature_shape.hpp"
#include "face_pipeline/haar/quick_plan.hpp"

namespace halcyra::haar {
namespace {

// No window's pixels have a larger standard deviation.
constexpr double kLargestDeviation = 127.5;

// Larger patches would not stay in the cache.
constexpr std::size_t kLargestPatch = 2048;

// Whole votes add up to less than this in magnitude.
constexpr double kLargestVoteSum = 1073741824.0;

// The part of a window whose contrast is measured.
cv::Rect inner_window(const cv::Size& window) {
  return {1, 1, window.width - 2, window.height - 2};
}

AnyFeature with_offsets(const RectFeature& feature, const EntryOffsets& offset) {
  AnyFeature any{};
  for (std::size_t i = 0; i < feature.size(); ++i) {
    const std::array<Corner, 4> corners = corners_of(feature[i].area);
    std::transform(corners.begin(), corners.end(), std::begin(any.corners[i]), offset);
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

class ScanPlanner {
 public:
  ScanPlanner(const StumpCascade& cascade, const EntryOffsets& offset, ScanPlan& plan)
      : offset_(offset),
        deviations_(deviations_of(inner_window(cascade.window).size())),
        largest_deviation_(inner_window(cascade.window).area() * kLargestDeviation),
        plan_(plan) {
    plan.deviation_unit = static_cast<float>(deviations_.unit);
    for (const RectFeature& feature : cascade.features) {
      plan.features.push_back(with_offsets(feature, offset));
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
    add_quick_stage(first ? CascadeStage() : stage, shaped_, deviations_, offset_, plan_);
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
    const bool within = std::abs(static_cast<double>(stump.threshold)) * largest_deviation_ < kCut;
    return within ? shaped_[static_cast<std::size_t>(stump.feature)].shape : kAnyShape;
  }

  void set_offsets(const Stump& stump, FeatureShape shape, PlannedStump& planned) {
    if (shape == kAnyShape) {
      planned.offsets[0] = stump.feature;
      return;
    }
    const Corners& corners = shaped_[static_cast<std::size_t>(stump.feature)].corners;
    std::transform(corners.begin(), corners.end(), std::begin(planned.offsets), offset_);
  }

  const EntryOffsets& offset_;
  Deviations deviations_;
  double largest_deviation_;  // of all windows, as the inverse of the norm
  ScanPlan& plan_;
  std::vector<ShapedFeature> shaped_;
};

// ---- Packed windows.

constexpr std::array<int, kAnyShape> kCornerCounts = {6, 8, 9, 9};

// Calls `visit` with each offset of the stages after the first. Stumps of kAnyShape read no
// patches.
template <class Stage, class Stump, class Visit>
void for_packed_offsets(const std::vector<Stage>& stages, std::vector<Stump>& stumps, Visit visit) {
  for (std::size_t stage = 1; stage < stages.size(); ++stage) {
    std::int32_t stump = stages[stage].first;
    for (std::size_t shape = 0; shape < kCornerCounts.size(); ++shape) {
      for (; stump < stages[stage].ends[shape]; ++stump) {
        for (int i = 0; i < kCornerCounts[shape]; ++i) {
          visit(stumps[static_cast<std::size_t>(stump)].offsets[i]);
        }
      }
    }
  }
}

// A stage costs a vector the same for any number of windows alive. Packing these first costs their
// patches, and their share of a full vector. Half of them fail the stage, or so, and would then not
// have needed a patch; the others need one soon in either case.
std::int32_t fewest_windows(int stumps, const PackingCost& packing, std::size_t blocks) {
  constexpr double kAnyStage = 4.0;  // what a stage costs besides its stumps
  const double patch = static_cast<double>(blocks) * packing.block;
  const double of_a_vector = static_cast<double>(stumps) / packing.group;
  return static_cast<std::int32_t>(std::ceil((stumps + kAnyStage) / (patch / 2.0 + of_a_vector)));
}

// Covers the entries that stumps read with blocks, and gives the stumps the entries' offsets in a
// batch.
void pack(const PackingCost& packing, ScanPlan& plan) {
  std::map<std::int32_t, std::int32_t> packed;  // offsets in a batch, by offset in the plane
  const auto note = [&packed](std::int32_t& offset) { packed[offset]; };
  for_packed_offsets(plan.quick_stages, plan.quick_stumps, note);
  for_packed_offsets(plan.stages, plan.stumps, note);
  for (auto& [offset, place] : packed) {
    if (plan.blocks.empty() || offset >= plan.blocks.back().offset + kEight) {
      plan.blocks.push_back({offset});
    }
    const auto block = static_cast<std::int32_t>(plan.blocks.size()) - 1;
    place = (block * kEight + offset - plan.blocks.back().offset) * packing.group;
  }
  const auto to_batch = [&packed](std::int32_t& offset) { offset = packed[offset]; };
  plan.packed_quick_stumps = plan.quick_stumps;
  for_packed_offsets(plan.quick_stages, plan.packed_quick_stumps, to_batch);
  for_packed_offsets(plan.stages, plan.stumps, to_batch);
  for (std::size_t i = 0; i < plan.stages.size(); ++i) {
    plan.quick_stages[i].fewest_windows =
        fewest_windows(plan.stages[i].exact_count, packing, plan.blocks.size());
  }
}

// Windows count only while area * norm < 0.1, with the norm a float and the product a double.
float largest_norm(double area) {
  constexpr double kLimit = 1e-1;
  auto norm = static_cast<float>(kLimit / area);
  while (area * static_cast<double>(norm) < kLimit) norm = std::nextafter(norm, 1.0F);
  while (area * static_cast<double>(norm) >= kLimit) norm = std::nextafter(norm, 0.0F);
  return norm;
}

}  // namespace

PlanView ScanPlan::view() const {
  PlanView view{};
  view.stages = stages.data();
  view.stage_count = static_cast<std::int32_t>(stages.size());
  view.stumps = stumps.data();
  view.quick_stages = quick_stages.data();
  view.quick_stumps = quick_stumps.data();
  view.packed_quick_stumps = packed_quick_stumps.data();
  view.quick_any = quick_any.data();
  view.blocks = blocks.data();
  view.block_count = static_cast<std::int32_t>(blocks.size());
  view.features = features.data();
  view.exact = exact.data();
  std::copy(norm_corners.begin(), norm_corners.end(), std::begin(view.norm_corners));
  view.norm_area = norm_area;
  view.largest_norm = largest_norm;
  view.deviation_unit = deviation_unit;
  return view;
}

ScanPlan plan_scan(const StumpCascade& cascade, const PlaneLayout& layout,
                   const WindowColumns& columns, const PackingCost& packing) {
  const EntryOffsets offset(layout, columns);
  const cv::Rect inner = inner_window(cascade.window);
  ScanPlan plan;
  const std::array<Corner, 4> corners = corners_of(inner);
  std::transform(corners.begin(), corners.end(), plan.norm_corners.begin(), offset);
  plan.norm_area = inner.area();
  plan.largest_norm = largest_norm(plan.norm_area);
  ScanPlanner planner(cascade, offset, plan);
  for (const CascadeStage& stage : cascade.stages) planner.add(stage);
  const auto patch = static_cast<std::size_t>((cascade.window + cv::Size(1, 1)).area());
  if (patch <= kLargestPatch) {
    pack(packing, plan);
  }
  return plan;
}

}  // namespace halcyra::haar
