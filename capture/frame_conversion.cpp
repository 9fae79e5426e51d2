#include "capture/frame_conversion.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>
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
constexpr double kNearDepth = 500.0;   // the sensor's specified range begins here
constexpr double kFarDepth = 4500.0;   // and ends here

struct Range {
  double low;
  double high;
};

// The code for a single pixel selects between values and does not branch, so that the compiler can
// vectorise the loops.

bool is_intensity(float pixel) {
  return bool((pixel > 0) & (pixel <= std::numeric_limits<float>::max()));
}

// Positive floats are in the same order as the integers with the same bits, and the minimum and
// maximum of integers can be vectorised.
std::int32_t bits_of(float pixel) {
  std::int32_t bits = 0;
  std::memcpy(&bits, &pixel, sizeof bits);
  return bits;
}

double float_of(std::int32_t bits) {
  float pixel = 0;
  std::memcpy(&pixel, &bits, sizeof pixel);
  return pixel;
}

// The least and the greatest intensity. `high` is not above `low` if no two intensities differ.
Range intensity_range(const cv::Mat& intensities) {
  const std::int32_t most = bits_of(std::numeric_limits<float>::max());
  const int width = intensities.cols;
  std::int32_t low = most;
  std::int32_t high = 0;
  for (int y = 0; y < intensities.rows; ++y) {
    const float* row = intensities.ptr<float>(y);
    for (int x = 0; x < width; ++x) {
      const std::int32_t bits = bits_of(row[x]);
      const bool counts = bool((bits > 0) & (bits <= most));
      low = std::min(low, counts ? bits : most);
      high = std::max(high, counts ? bits : 0);
    }
  }
  return {float_of(low), float_of(high)};
}

Range capped(Range range) {
  const double share = kCapShare * (range.high - range.low);
  const double cap = range.low + std::max(share, kCapFloor);
  return {range.low, std::min(range.high, cap)};
}

// A pixel that is not an intensity counts as the least one and gets level 0.
unsigned char intensity_level(float pixel, const Range& range, double scale) {
  const double intensity = is_intensity(pixel) ? static_cast<double>(pixel) : range.low;
  const double capped = intensity < range.high ? intensity : range.high;
  const int level = static_cast<int>((capped - range.low) * scale);
  return static_cast<unsigned char>(level < 255 ? level : 255);
}

bool is_depth(float pixel) { return bool((pixel >= kLeastDepth) & (pixel <= kMostDepth)); }

// Near is bright: 255 up to 500 mm, falling to 0 at 4500 mm; 0 for a pixel that is not a depth.
unsigned char depth_level(float pixel) {
  const double millimetres = is_depth(pixel) ? static_cast<double>(pixel) : kFarDepth;
  const double far_enough = millimetres > kNearDepth ? millimetres : kNearDepth;
  const double depth = far_enough < kFarDepth ? far_enough : kFarDepth;
  return static_cast<unsigned char>(static_cast<int>(255 - ((depth - kNearDepth) / 4000) * 255));
}

// Applies `level_of` to every pixel; the result has 8 bits.
template <typename LevelOf>
cv::Mat levels_of(const cv::Mat& pixels, LevelOf level_of) {
  cv::Mat levels(pixels.size(), CV_8UC1);
  const int width = pixels.cols;
  cv::parallel_for_(cv::Range(0, pixels.rows), [&](const cv::Range& rows) {
    const LevelOf level = level_of;  // a copy, which no write to the levels can alias
    for (int y = rows.start; y < rows.end; ++y) {
      const float* from = pixels.ptr<float>(y);
      unsigned char* to = levels.ptr<unsigned char>(y);
      for (int x = 0; x < width; ++x) to[x] = level(from[x]);
    }
  });
  return levels;
}

bool has_depth(const cv::Mat& millimetres) {
  for (int y = 0; y < millimetres.rows; ++y) {
    const float* row = millimetres.ptr<float>(y);
    if (std::any_of(row, row + millimetres.cols, is_depth)) return true;
  }
  return false;
}

}  // namespace

ColorImages color_images(const cv::Mat& pixels, ChannelOrder order) {
  const bool rgbx = order == ChannelOrder::kRgbx;
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
  cv::Mat levels =
      levels_of(intensities, [=](float pixel) { return intensity_level(pixel, range, scale); });
  cv::equalizeHist(levels, levels);
  cv::cvtColor(levels, picture, cv::COLOR_GRAY2BGR);
  return true;
}

bool depth_picture(const cv::Mat& millimetres, cv::Mat& picture) {
  if (!has_depth(millimetres)) return false;
  const cv::Mat levels = levels_of(millimetres, [](float pixel) { return depth_level(pixel); });
  cv::applyColorMap(levels, picture, cv::COLORMAP_JET);
  return true;
}

}  // namespace halcyra
