// How a feature is computed from few corners.
#pragma once

#include <array>
#include <utility>
#include <vector>

#include <opencv2/core/types.hpp>

#include "face_pipeline/haar/scan_records.hpp"
#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

using Corner = std::pair<int, int>;  // x, y in pixels of the window
using Corners = std::vector<Corner>;

struct ShapedFeature {
  FeatureShape shape = kAnyShape;
  Corners corners;  // in the shape's order; none for kAnyShape
};

// The upper left, upper right, lower left and lower right one.
std::array<Corner, 4> corners_of(const cv::Rect& area);

// kAnyShape if no other shape fits, or if parts of a value may not fit into 16 bits.
ShapedFeature shape_of(const RectFeature& feature);

// The same with all values' signs changed. Not for kAnyShape.
ShapedFeature negated(const ShapedFeature& shaped);

}  // namespace halcyra::haar
