#include "tests/e2e/pictures.hpp"

#include <opencv2/imgproc.hpp>

namespace halcyra {

cv::Mat first_three_channels(const cv::Mat& picture) {
  cv::Mat result;
  cv::cvtColor(picture, result, cv::COLOR_BGRA2BGR);
  return result;
}

}  // namespace halcyra
