// The card that is shown in place of a missing camera picture.
#pragma once

#include <string>

#include <opencv2/core/mat.hpp>

namespace halcyra {

// Fills `rect`, then writes the title in `color` and the wrapped detail below it. Lines of the
// detail that would come near the bottom are left out.
void drawViewStatus(cv::Mat& canvas, const cv::Rect& rect, const std::string& title,
                    const std::string& detail, const cv::Scalar& color);

}  // namespace halcyra
