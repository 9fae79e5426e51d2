// Text that looks as it did in the last picture, copied instead of drawn.
#pragma once

#include <string>

#include <opencv2/core/mat.hpp>

namespace halcyra {

// Draws what cv::putText draws in FONT_HERSHEY_SIMPLEX with lines one pixel thick and LINE_AA on an
// 8-bit BGR canvas. From the second time on, a text is copied if the canvas has a single colour
// there. Keeps up to 8 MB of drawn texts for each thread. With cv::useOptimized() off, nothing is
// copied.
void drawThinText(cv::Mat& canvas, const std::string& text, cv::Point origin, double scale,
                  const cv::Scalar& color);

}  // namespace halcyra
