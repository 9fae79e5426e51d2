// The shrinking of pictures in plain arithmetic.
#pragma once

#include <opencv2/core.hpp>

namespace halcyra {

// Whether cv::resize with INTER_AREA weighs pixels with fractions to shrink from one size to the
// other: both sides shrink, and not both by a whole factor, for which it adds whole numbers.
bool shrinks_with_fractions(cv::Size from, cv::Size to);

// What cv::resize with INTER_AREA makes of an 8-bit picture where shrinks_with_fractions is true,
// to the bit as long as the library's compiler fuses no multiplication with an addition. Where it
// does, as on arm64, a few of the library's pixels are one level off.
cv::Mat shrunk(const cv::Mat& picture, cv::Size size);

}  // namespace halcyra
