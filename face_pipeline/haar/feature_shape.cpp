#include "face_pipeline/haar/feature_shape.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <utility>

namespace halcyra::haar {
namespace {

using CornerWeight = std::pair<Corner, int>;

// In the corners' order, each once.
using CornerWeights = std::vector<CornerWeight>;

// Without the corners whose weights cancel out.
CornerWeights corner_weights(const RectFeature& feature) {
  constexpr std::array<int, 4> kSigns = {1, -1, -1, 1};
  CornerWeights all;
  all.reserve(kSigns.size() * feature.size());
  for (const WeightedRect& rect : feature) {
    const std::array<Corner, 4> corners = corners_of(rect.area);
    for (std::size_t i = 0; i < corners.size(); ++i) {
      all.emplace_back(corners[i], kSigns[i] * rect.weight);
    }
  }
  std::sort(all.begin(), all.end());
  CornerWeights sums;
  sums.reserve(all.size());
  for (const auto& [corner, weight] : all) {
    if (sums.empty() || sums.back().first != corner) sums.emplace_back(corner, 0);
    sums.back().second += weight;
  }
  sums.erase(std::remove_if(sums.begin(), sums.end(),
                            [](const CornerWeight& one) { return one.second == 0; }),
             sums.end());
  return sums;
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
  CornerWeights by_line = weights;
  if (!vertical) {
    for (auto& [corner, weight] : by_line) std::swap(corner.first, corner.second);
    std::sort(by_line.begin(), by_line.end());
  }
  if (by_line.size() % 2 != 0) return {};
  std::vector<CornerPair> pairs;
  pairs.reserve(by_line.size() / 2);
  for (std::size_t i = 0; i < by_line.size(); i += 2) {
    const auto& [from, from_weight] = by_line[i];
    const auto& [to, weight] = by_line[i + 1];
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

// The largest rectangle whose sum fits into 16 bits without a sign, and the largest two whose
// difference fits with a sign.
constexpr int kBrightest = 255;
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
  std::size_t count = 0;
  const auto add = [&shaped, &count](const CornerPair& pair, bool forward) {
    shaped.corners[count++] = forward ? pair.to : pair.from;
    shaped.corners[count++] = forward ? pair.from : pair.to;
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
    if (std::abs(sign) != 1 || weight != sign * kWeights[place]) return {};
    shaped.corners[place++] = corner;
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

}  // namespace

std::array<Corner, 4> corners_of(const cv::Rect& area) {
  const int right = area.x + area.width;
  const int bottom = area.y + area.height;
  return {Corner{area.x, area.y}, Corner{right, area.y}, Corner{area.x, bottom},
          Corner{right, bottom}};
}

ShapedFeature shape_of(const RectFeature& feature) {
  const CornerWeights weights = corner_weights(feature);
  for (const bool vertical : {true, false}) {
    ShapedFeature shaped = shape_of_lines(corner_pairs(weights, vertical));
    if (shaped.shape != kAnyShape) return shaped;
  }
  return shape_of_checks(weights);
}

FeatureShape negated(FeatureShape shape) {
  if (shape == kChecks) return kInverseChecks;
  if (shape == kInverseChecks) return kChecks;
  return shape;
}

// A value of kHalves is a difference of two rectangles: backwards, they change places. Those of
// kThirds change sign with each of their pairs.
ShapedFeature negated(const ShapedFeature& shaped) {
  ShapedFeature result = shaped;
  result.shape = negated(shaped.shape);
  const auto end = result.corners.begin() + corner_count(shaped.shape);
  if (shaped.shape == kHalves) std::reverse(result.corners.begin(), end);
  if (shaped.shape == kThirds) {
    for (auto it = result.corners.begin(); it != end; it += 2) std::iter_swap(it, it + 1);
  }
  return result;
}

}  // namespace halcyra::haar
