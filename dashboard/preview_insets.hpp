// The small infrared and depth pictures over the colour picture of the combined view.
#pragma once

#include <opencv2/core/mat.hpp>

namespace halcyra {

// Draws both insets down the right edge of `area`, the depth one only where it fits; nothing when
// both pictures are empty.
void drawPreviewInsets(cv::Mat& canvas, const cv::Rect& area, const cv::Mat& infrared,
                       const cv::Mat& depth);

}  // namespace halcyra
