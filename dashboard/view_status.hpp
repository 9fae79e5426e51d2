// The card that stands where a camera picture is missing.
#pragma once

#include <string>

#include <opencv2/core/mat.hpp>

namespace halcyra {

// Fills `rect` with a heading in `color` and a wrapped explanation below it.
void drawViewStatus(cv::Mat& canvas, const cv::Rect& rect, const std::string& title,
                    const std::string& detail, const cv::Scalar& color);

}  // namespace halcyra
