// At which scales a picture is searched.
#pragma once

#include <vector>

#include <opencv2/core/types.hpp>

namespace halcyra::haar {

struct SizeLimits {
  cv::Size least;
  cv::Size largest;  // the picture's own size where a side is 0
};

// The picture is shrunk by each of these factors, from fine to coarse, so that objects of the
// allowed sizes come to fill `window`; one factor, the nearest, where no size of the series is
// allowed. `picture` must be at least as large as `window`, `step` above 1. The same list as
// cv::CascadeClassifier::detectMultiScale of OpenCV 4.6.
std::vector<float> search_scales(const cv::Size& picture, const cv::Size& window, double step,
                                 const SizeLimits& limits);

}  // namespace halcyra::haar
