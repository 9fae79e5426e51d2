// How a feature is computed from few corners.
#pragma once

#include <array>
#include <cstdint>
#include <utility>

#include <opencv2/core/types.hpp>

#include "face_pipeline/haar/scan_records.hpp"
#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

using Corner = std::pair<int, int>;  // x, y in pixels of the window
using Corners = std::array<Corner, 9>;

// Numbers the corners of a window row by row, from its upper left corner on.
class CornerIndex {
 public:
  explicit CornerIndex(const cv::Size& window) : corners_in_row_(window.width + 1) {}
  std::int32_t operator()(const Corner& corner) const {
    return corner.second * corners_in_row_ + corner.first;
  }

 private:
  int corners_in_row_;
};

// How many entries a feature of this shape reads; 0 for kAnyShape.
constexpr int corner_count(FeatureShape shape) {
  constexpr std::array<int, kShapeCount> kCounts = {6, 8, 9, 9, 0};
  return kCounts[shape];
}

struct ShapedFeature {
  FeatureShape shape = kAnyShape;
  Corners corners{};  // the first ones, as many as the shape has, in its order
};

// The upper left, upper right, lower left and lower right one.
std::array<Corner, 4> corners_of(const cv::Rect& area);

// kAnyShape if no other shape fits, or if parts of a value may not fit into 16 bits.
ShapedFeature shape_of(const RectFeature& feature);

// The shape of a feature of this shape with all values' signs changed, and that feature.
FeatureShape negated(FeatureShape shape);
ShapedFeature negated(const ShapedFeature& shaped);

}  // namespace halcyra::haar
