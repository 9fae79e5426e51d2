#include "capture/frame_conversion.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include <opencv2/imgproc.hpp>

namespace halcyra {
namespace {

// Intensities above the cap saturate, so that a few hot pixels do not darken the picture; the floor
// keeps a dim scene from being stretched into noise.
constexpr double kCapShare = 0.85;
constexpr double kCapFloor = 1200.0;

constexpr double kLeastDepth = 250.0;  // millimetres; nearer readings are noise
constexpr double kMostDepth = 8000.0;  // farther readings are noise
constexpr double kNearDepth = 500.0;   // the sensor's stated range begins
constexpr double kFarDepth = 4500.0;   // and ends

struct Range {
  double low;
  double high;
};

bool is_intensity(float pixel) { return std::isfinite(pixel) && pixel > 0; }

// Least and greatest intensity; high is not above low when no two of them differ.
Range intensity_range(const cv::Mat& intensities) {
  Range range{std::numeric_limits<double>::max(), 0.0};
  for (int y = 0; y < intensities.rows; ++y) {
    const float* row = intensities.ptr<float>(y);
    for (int x = 0; x < intensities.cols; ++x) {
      if (!is_intensity(row[x])) continue;
      range.low = std::min(range.low, static_cast<double>(row[x]));
      range.high = std::max(range.high, static_cast<double>(row[x]));
    }
  }
  return range;
}

Range capped(Range range) {
  const double share = kCapShare * (range.high - range.low);
  const double cap = range.low + std::max(share, kCapFloor);
  return {range.low, std::min(range.high, cap)};
}

unsigned char intensity_level(float pixel, const Range& range, double scale) {
  const double value = (std::min(static_cast<double>(pixel), range.high) - range.low) * scale;
  return static_cast<unsigned char>(std::clamp(static_cast<int>(value), 0, 255));
}

bool is_depth(float pixel) { return pixel >= kLeastDepth && pixel <= kMostDepth; }

// Near is bright: 255 up to 500 mm, falling to 0 at 4500 mm.
unsigned char depth_level(float pixel) {
  const double depth = std::clamp(static_cast<double>(pixel), kNearDepth, kFarDepth);
  return static_cast<unsigned char>(255 - ((depth - kNearDepth) / 4000) * 255);
}

}  // namespace

ColorImages color_images(const cv::Mat& pixels, ChannelOrder order) {
  const bool rgbx = order == ChannelOrder::rgbx;
  ColorImages images;
  cv::cvtColor(pixels, images.bgr, rgbx ? cv::COLOR_RGBA2BGR : cv::COLOR_BGRA2BGR);
  cv::cvtColor(pixels, images.grey, rgbx ? cv::COLOR_RGBA2GRAY : cv::COLOR_BGRA2GRAY);
  return images;
}

bool infrared_picture(const cv::Mat& intensities, cv::Mat& picture) {
  const Range full = intensity_range(intensities);
  if (full.high <= full.low) return false;
  const Range range = capped(full);
  const double scale = 255 / std::max(range.high - range.low, 1.0);
  cv::Mat levels = cv::Mat::zeros(intensities.size(), CV_8UC1);
  for (int y = 0; y < intensities.rows; ++y) {
    const float* from = intensities.ptr<float>(y);
    unsigned char* to = levels.ptr<unsigned char>(y);
    for (int x = 0; x < intensities.cols; ++x) {
      if (is_intensity(from[x])) to[x] = intensity_level(from[x], range, scale);
    }
  }
  cv::equalizeHist(levels, levels);
  cv::cvtColor(levels, picture, cv::COLOR_GRAY2BGR);
  return true;
}

bool depth_picture(const cv::Mat& millimetres, cv::Mat& picture) {
  cv::Mat levels = cv::Mat::zeros(millimetres.size(), CV_8UC1);
  bool any = false;
  for (int y = 0; y < millimetres.rows; ++y) {
    const float* from = millimetres.ptr<float>(y);
    unsigned char* to = levels.ptr<unsigned char>(y);
    for (int x = 0; x < millimetres.cols; ++x) {
      if (!is_depth(from[x])) continue;
      to[x] = depth_level(from[x]);
      any = true;
    }
  }
  if (!any) return false;
  cv::applyColorMap(levels, picture, cv::COLORMAP_JET);
  return true;
}

}  // namespace halcyra
