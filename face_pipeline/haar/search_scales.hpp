// The scales at which a picture is searched.
#pragma once

#include <vector>

#include <opencv2/core/types.hpp>

namespace halcyra::haar {

struct SizeLimits {
  cv::Size least;
  cv::Size largest;  // if a side is 0, the picture's own size
};

// The factors by which the picture is shrunk, from fine to coarse, so that objects of the allowed
// sizes fill `window`: powers of `step`, the first being 1. If none of them gives an allowed size,
// the one that comes nearest to the least size. `picture` must be at least as large as `window`,
// `step` above 1. The same list that cv::CascadeClassifier::detectMultiScale uses.
std::vector<float> search_scales(const cv::Size& picture, const cv::Size& window, double step,
                                 const SizeLimits& limits);

}  // namespace halcyra::haar
