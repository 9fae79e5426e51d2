// The small infrared and depth pictures over the colour picture of the combo view.
#pragma once

#include <opencv2/core/mat.hpp>

namespace halcyra {

// Draws infrared above depth at the right edge of `area`. Each inset says so when its picture is
// empty; when both are, nothing is drawn. The depth inset is left out where it does not fit.
void drawPreviewInsets(cv::Mat& canvas, const cv::Rect& area, const cv::Mat& infrared,
                       const cv::Mat& depth);

}  // namespace halcyra
