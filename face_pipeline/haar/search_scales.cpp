#include "face_pipeline/haar/search_scales.hpp"

#include <algorithm>

#include <opencv2/core.hpp>

namespace halcyra::haar {
namespace {

// OpenCV uses double factors to make the series and float factors afterwards, and the rounding of a
// size may depend on which.
template <class Factor>
cv::Size scaled_window(const cv::Size& window, Factor factor) {
  return {cvRound(static_cast<Factor>(window.width) * factor),
          cvRound(static_cast<Factor>(window.height) * factor)};
}

std::vector<float> whole_series(const cv::Size& picture, const cv::Size& window, double step) {
  std::vector<float> scales;
  for (double factor = 1.0;; factor *= step) {
    const cv::Size size = scaled_window(window, factor);
    if (size.width > picture.width || size.height > picture.height) return scales;
    scales.push_back(static_cast<float>(factor));
  }
}

// Squared. For absurd sizes it wraps around as OpenCV's 32-bit arithmetic does.
double distance(const cv::Size& a, const cv::Size& b) {
  const auto width = static_cast<unsigned>(a.width) - static_cast<unsigned>(b.width);
  const auto height = static_cast<unsigned>(a.height) - static_cast<unsigned>(b.height);
  return static_cast<int>(width * width + height * height);
}

float nearest(const std::vector<float>& scales, const cv::Size& window, const cv::Size& wanted) {
  return *std::min_element(scales.begin(), scales.end(), [&](float a, float b) {
    return distance(wanted, scaled_window(window, a)) < distance(wanted, scaled_window(window, b));
  });
}

}  // namespace

std::vector<float> search_scales(const cv::Size& picture, const cv::Size& window, double step,
                                 const SizeLimits& limits) {
  const bool limited = limits.largest.width != 0 && limits.largest.height != 0;
  const cv::Size largest = limited ? limits.largest : picture;
  const std::vector<float> all = whole_series(picture, window, step);
  std::vector<float> scales;
  for (const float scale : all) {
    const cv::Size size = scaled_window(window, scale);
    if (size.width > largest.width || size.height > largest.height) break;
    if (size.width < limits.least.width || size.height < limits.least.height) continue;
    scales.push_back(scale);
  }
  if (scales.empty()) scales.push_back(nearest(all, window, limits.least));
  return scales;
}

}  // namespace halcyra::haar
