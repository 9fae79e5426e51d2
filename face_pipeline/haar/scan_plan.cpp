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

Corners with_weight(const CornerWeights& weights, int weight) {
  Corners corners;
  for (const auto& [corner, its_weight] : weights) {
    if (its_weight == weight) corners.push_back(corner);
  }
  return corners;
}

struct ShapedFeature {
  FeatureShape shape = kAnyShape;
  Corners corners;  // in the shape's order; none for kAnyShape
};

struct ShapeRule {
  FeatureShape shape;
  std::vector<std::pair<int, std::size_t>> weights;  // each with the number of its corners
};

const std::vector<ShapeRule>& shape_rules() {
  static const std::vector<ShapeRule> rules = {{kHalves, {{1, 2}, {-1, 2}, {2, 1}, {-2, 1}}},
                                               {kThirds, {{1, 2}, {-1, 2}, {3, 2}, {-3, 2}}},
                                               {kChecks, {{1, 4}, {-2, 4}, {4, 1}}},
                                               {kInverseChecks, {{-1, 4}, {2, 4}, {-4, 1}}}};
  return rules;
}

// Fills in the corners in the rule's order if the weights follow the rule.
bool take_corners(const CornerWeights& weights, const ShapeRule& rule, Corners& corners) {
  for (const auto& [weight, count] : rule.weights) {
    const Corners found = with_weight(weights, weight);
    if (found.size() != count) return false;
    corners.insert(corners.end(), found.begin(), found.end());
  }
  return corners.size() == weights.size();
}

// The smallest and the largest value that any picture gives.
std::pair<int, int> value_range(const RectFeature& feature, const cv::Size& window) {
  std::pair<int, int> range{0, 0};
  for (int y = 0; y < window.height; ++y) {
    for (int x = 0; x < window.width; ++x) {
      int weight = 0;
      for (const WeightedRect& rect : feature) {
        if (rect.area.contains({x, y})) weight += rect.weight;
      }
      range.first += std::min(weight, 0) * kBrightest;
      range.second += std::max(weight, 0) * kBrightest;
    }
  }
  return range;
}

ShapedFeature shape_of(const RectFeature& feature, const cv::Size& window) {
  const auto [least, most] = value_range(feature, window);
  if (least < std::numeric_limits<std::int16_t>::min() ||
      most > std::numeric_limits<std::int16_t>::max()) {
    return {};
  }
  const CornerWeights weights = corner_weights(feature);
  for (const ShapeRule& rule : shape_rules()) {
    ShapedFeature shaped{rule.shape, {}};
    if (take_corners(weights, rule, shaped.corners)) return shaped;
  }
  return {};
}

AnyFeature any_feature(const RectFeature& feature, const EntryOffsets& offset) {
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

class ScanPlanner {
 public:
  ScanPlanner(const StumpCascade& cascade, const EntryOffsets& offset, ScanPlan& plan)
      : cascade_(cascade), offset_(offset), plan_(plan) {
    for (const RectFeature& feature : cascade.features) {
      shaped_.push_back(shape_of(feature, cascade.window));
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
    plan_.stages.push_back(planned);
  }

 private:
  void add_stumps_of(FeatureShape shape, const CascadeStage& stage, double unit,
                     PlannedStage& planned) {
    for (std::size_t i = 0; i < stage.stumps.size(); ++i) {
      const Stump& stump = stage.stumps[i];
      if (shaped_[static_cast<std::size_t>(stump.feature)].shape != shape) continue;
      plan_.exact[static_cast<std::size_t>(planned.first_exact) + i] = {
          static_cast<std::int32_t>(plan_.stumps.size()), shape, stump.threshold, stump.below,
          stump.not_below};
      const std::int32_t not_below = whole_votes(stump.not_below, unit);
      planned.start += not_below;
      PlannedStump added{};
      set_offsets(stump, added);
      added.threshold = stump.threshold;
      added.gain = whole_votes(stump.below, unit) - not_below;
      plan_.stumps.push_back(added);
    }
  }

  void set_offsets(const Stump& stump, PlannedStump& planned) {
    const auto feature = static_cast<std::size_t>(stump.feature);
    if (shaped_[feature].shape == kAnyShape) {
      planned.offsets[0] = static_cast<std::int32_t>(plan_.any.size());
      plan_.any.push_back(any_feature(cascade_.features[feature], offset_));
    } else {
      const Corners& corners = shaped_[feature].corners;
      std::transform(corners.begin(), corners.end(), std::begin(planned.offsets), offset_);
    }
  }

  const StumpCascade& cascade_;
  const EntryOffsets& offset_;
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

PlanView ScanPlan::view() const {
  PlanView view{};
  view.stages = stages.data();
  view.stage_count = static_cast<std::int32_t>(stages.size());
  view.stumps = stumps.data();
  view.any = any.data();
  view.exact = exact.data();
  std::copy(norm_corners.begin(), norm_corners.end(), std::begin(view.norm_corners));
  view.norm_area = norm_area;
  view.largest_norm = largest_norm;
  return view;
}

ScanPlan plan_scan(const StumpCascade& cascade, const PlaneLayout& layout,
                   const WindowColumns& columns) {
  const EntryOffsets offset(layout, columns);
  const cv::Rect inner(1, 1, cascade.window.width - 2, cascade.window.height - 2);
  ScanPlan plan;
  const std::array<Corner, 4> corners = corners_of(inner);
  std::transform(corners.begin(), corners.end(), plan.norm_corners.begin(), offset);
  plan.norm_area = inner.area();
  plan.largest_norm = largest_norm(plan.norm_area);
  ScanPlanner planner(cascade, offset, plan);
  for (const CascadeStage& stage : cascade.stages) planner.add(stage);
  return plan;
}

}  // namespace halcyra::haar
