// Conversions of pictures.
#pragma once

#include <opencv2/core/mat.hpp>

namespace halcyra {

// A copy of a four-channel picture without its last channel.
cv::Mat first_three_channels(const cv::Mat& picture);

}  // namespace halcyra
