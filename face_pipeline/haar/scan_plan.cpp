#include "face_pipeline/haar/scan_plan.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <map>
#include <utility>

namespace halcyra::haar {
namespace {

using Corner = std::pair<int, int>;  // x, y
using CornerWeights = std::map<Corner, int>;
using Corners = std::vector<Corner>;

constexpr int kBrightest = 255;

// No window's pixels have a larger standard deviation.
constexpr double kLargestDeviation = kBrightest / 2.0;

// Larger patches would not stay in the cache.
constexpr std::size_t kLargestPatch = 2048;

// Whole votes add up to less than this in magnitude.
constexpr double kLargestVoteSum = 1073741824.0;

// Which entry of a plane the first window of a row reads for a corner in window pixels.
class EntryOffsets {
 public:
  EntryOffsets(const PlaneLayout& layout, const WindowColumns& columns)
      : layout_(layout), columns_(columns) {}

  std::int32_t operator()(const Corner& corner) const {
    const int row = corner.second * layout_.pitch;
    if (columns_.step == 1) return row + corner.first;
    const int column = columns_.first + corner.first;
    return row + column % 2 * layout_.odd_start + column / 2;
  }

 private:
  PlaneLayout layout_;
  WindowColumns columns_;
};

std::array<Corner, 4> corners_of(const cv::Rect& area) {
  const int right = area.x + area.width;
  const int bottom = area.y + area.height;
  return {Corner{area.x, area.y}, Corner{right, area.y}, Corner{area.x, bottom},
          Corner{right, bottom}};
}

// The part of a window whose contrast is measured.
cv::Rect inner_window(const cv::Size& window) {
  return {1, 1, window.width - 2, window.height - 2};
}

// Without the corners whose weights cancel out.
CornerWeights corner_weights(const RectFeature& feature) {
  constexpr std::array<int, 4> kSigns = {1, -1, -1, 1};
  CornerWeights weights;
  for (const WeightedRect& rect : feature) {
    const std::array<Corner, 4> corners = corners_of(rect.area);
    for (std::size_t i = 0; i < corners.size(); ++i) weights[corners[i]] += kSigns[i] * rect.weight;
  }
  for (auto it = weights.begin(); it != weights.end();) {
    it = it->second == 0 ? weights.erase(it) : std::next(it);
  }
  return weights;
}

// Two corners of a feature on one of its lines, and the weight of their difference.
struct CornerPair {
  Corner from;
  Corner to;
  int weight = 0;  // of `to` minus `from`
};

// The pairs of corners on vertical or horizontal lines, in the lines' order. None if the corners do
// not form such pairs, all from and to the same coordinates.
std::vector<CornerPair> corner_pairs(const CornerWeights& weights, bool vertical) {
  CornerWeights by_line;
  for (const auto& [corner, weight] : weights) {
    by_line[vertical ? corner : Corner(corner.second, corner.first)] = weight;
  }
  std::vector<CornerPair> pairs;
  for (auto it = by_line.begin(); it != by_line.end(); ++it) {
    const auto [from, from_weight] = *it;
    if (++it == by_line.end()) return {};
    const auto [to, weight] = *it;
    if (to.first != from.first || weight != -from_weight) return {};
    if (!pairs.empty() &&
        (from.second != pairs[0].from.second || to.second != pairs[0].to.second)) {
      return {};
    }
    pairs.push_back({from, to, weight});
  }
  if (vertical) return pairs;
  for (CornerPair& pair : pairs) {
    std::swap(pair.from.first, pair.from.second);
    std::swap(pair.to.first, pair.to.second);
  }
  return pairs;
}

// The largest of the rectangles between neighbouring lines, in pixels.
int largest_area(const std::vector<CornerPair>& pairs) {
  int largest = 0;
  for (std::size_t i = 1; i < pairs.size(); ++i) {
    const int width = pairs[i].to.first - pairs[i - 1].from.first;
    const int height = pairs[i].to.second - pairs[i - 1].from.second;
    largest = std::max(largest, std::abs(width * height));
  }
  return largest;
}

struct ShapedFeature {
  FeatureShape shape = kAnyShape;
  Corners corners;  // in the shape's order; none for kAnyShape
};

// The largest rectangle whose sum fits into 16 bits without a sign, and the largest two whose
// difference fits with a sign.
constexpr int kLargestPart = 65535 / kBrightest;
constexpr int kLargestSignedPart = 32767 / kBrightest;

// kHalves is for a rectangle minus its neighbour: weights 1, -2, 1 or the negative of these.
// kThirds is for twice a rectangle minus its neighbours on both sides.
ShapedFeature shape_of_lines(const std::vector<CornerPair>& pairs) {
  if (pairs.empty() || std::abs(pairs[0].weight) != 1) return {};
  const int sign = pairs[0].weight;
  const auto weights_are = [&](const std::vector<int>& weights) {
    return std::equal(
        weights.begin(), weights.end(), pairs.begin(), pairs.end(),
        [sign](int weight, const CornerPair& pair) { return pair.weight == sign * weight; });
  };
  ShapedFeature shaped;
  const auto add = [&shaped](const CornerPair& pair, bool forward) {
    shaped.corners.push_back(forward ? pair.to : pair.from);
    shaped.corners.push_back(forward ? pair.from : pair.to);
  };
  if (weights_are({1, -2, 1}) && largest_area(pairs) <= kLargestPart) {
    shaped.shape = kHalves;
    for (int i = 0; i < 3; ++i) {
      add(pairs[static_cast<std::size_t>(sign > 0 ? 2 - i : i)], sign > 0);
    }
  } else if (weights_are({1, -3, 3, -1}) && largest_area(pairs) <= kLargestSignedPart) {
    shaped.shape = kThirds;
    for (const CornerPair& pair : pairs) add(pair, sign > 0);
  }
  return shaped;
}

// Four rectangles that meet in a corner: the two on one diagonal minus the others.
ShapedFeature shape_of_checks(const CornerWeights& weights) {
  constexpr std::array<int, 9> kWeights = {1, -2, 1, -2, 4, -2, 1, -2, 1};
  if (weights.size() != kWeights.size()) return {};
  ShapedFeature shaped;
  const int sign = weights.begin()->second;
  std::size_t place = 0;
  for (const auto& [corner, weight] : weights) {
    if (std::abs(sign) != 1 || weight != sign * kWeights[place++]) return {};
    shaped.corners.push_back(corner);
  }
  const auto on_grid = [&corners = shaped.corners](std::size_t i) {
    return corners[i].first == corners[i / 3 * 3].first &&
           corners[i].second == corners[i % 3].second;
  };
  for (std::size_t i = 0; i < kWeights.size(); ++i) {
    if (!on_grid(i)) return {};
  }
  const Corners& c = shaped.corners;
  const int width = std::max(c[3].first - c[0].first, c[6].first - c[3].first);
  const int height = std::max(c[1].second - c[0].second, c[2].second - c[1].second);
  if (width * height > kLargestSignedPart) return {};
  shaped.shape = sign > 0 ? kChecks : kInverseChecks;
  return shaped;
}

ShapedFeature shape_of(const RectFeature& feature) {
  const CornerWeights weights = corner_weights(feature);
  for (const bool vertical : {true, false}) {
    ShapedFeature shaped = shape_of_lines(corner_pairs(weights, vertical));
    if (shaped.shape != kAnyShape) return shaped;
  }
  return shape_of_checks(weights);
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
      : cascade_(cascade), offset_(offset), plan_(plan) {
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
    planned.fewest_windows = 1;
    set_early_limits(planned, plan_.stumps.data() + planned.ends[kInverseChecks],
                     plan_.stumps.data() + planned.ends[kAnyShape]);
    plan_.stages.push_back(planned);
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

  // A normalised value of 32767 or -32768 is far beyond most thresholds. Others need the whole
  // value.
  FeatureShape shape_for(const Stump& stump) const {
    constexpr double kCut = 32700.0;
    const double cut = kCut / (inner_window(cascade_.window).area() * kLargestDeviation);
    const bool within = std::abs(static_cast<double>(stump.threshold)) < cut;
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

  const StumpCascade& cascade_;
  const EntryOffsets& offset_;
  ScanPlan& plan_;
  std::vector<ShapedFeature> shaped_;
};

// ---- Packed windows.

constexpr std::array<int, kShapeCount> kCornerCounts = {6, 8, 9, 9, 0};

// Calls `visit` with each offset of the stages after the first. Stumps of kAnyShape read no
// patches.
template <class Visit>
void for_packed_offsets(const ScanPlan& plan, std::vector<PlannedStump>& stumps, Visit visit) {
  for (std::size_t stage = 1; stage < plan.stages.size(); ++stage) {
    std::int32_t stump = plan.stages[stage].first;
    for (std::size_t shape = 0; shape < kShapeCount; ++shape) {
      for (; stump < plan.stages[stage].ends[shape]; ++stump) {
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
  constexpr double kAnyStage = 5.0;  // what a stage costs besides its stumps
  const double patch = static_cast<double>(blocks) * packing.block;
  const double of_a_vector = static_cast<double>(stumps) / packing.group;
  return static_cast<std::int32_t>(std::ceil((stumps + kAnyStage) / (patch / 2.0 + of_a_vector)));
}

// Covers the entries that stumps read with blocks, and gives the stumps the entries' offsets in a
// batch.
void pack(const PackingCost& packing, ScanPlan& plan) {
  std::map<std::int32_t, std::int32_t> packed;  // offsets in a batch, by offset in the plane
  plan.packed_stumps = plan.stumps;
  for_packed_offsets(plan, plan.packed_stumps, [&packed](std::int32_t& offset) { packed[offset]; });
  for (auto& [offset, place] : packed) {
    if (plan.blocks.empty() || offset >= plan.blocks.back().offset + kEight) {
      plan.blocks.push_back({offset});
    }
    const auto block = static_cast<std::int32_t>(plan.blocks.size()) - 1;
    place = (block * kEight + offset - plan.blocks.back().offset) * packing.group;
  }
  for_packed_offsets(plan, plan.packed_stumps,
                     [&packed](std::int32_t& offset) { offset = packed[offset]; });
  for (PlannedStage& stage : plan.stages) {
    stage.fewest_windows = fewest_windows(stage.exact_count, packing, plan.blocks.size());
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
  view.packed_stumps = packed_stumps.data();
  view.blocks = blocks.data();
  view.block_count = static_cast<std::int32_t>(blocks.size());
  view.features = features.data();
  view.exact = exact.data();
  std::copy(norm_corners.begin(), norm_corners.end(), std::begin(view.norm_corners));
  view.norm_area = norm_area;
  view.largest_norm = largest_norm;
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
