#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <opencv2/imgproc.hpp>

#include "capture/frame_conversion.hpp"

namespace halcyra {
namespace {

constexpr float kLeastDepth = 250.0F;  // millimetres; nearer readings are noise
constexpr float kMostDepth = 8000.0F;  // farther readings are noise
constexpr float kNearDepth = 500.0F;   // the sensor's specified range begins here
constexpr float kFarDepth = 4500.0F;   // and ends here

bool is_depth(float pixel) { return bool((pixel >= kLeastDepth) & (pixel <= kMostDepth)); }

// Near is bright: 255 up to 500 mm, falling to 0 at 4500 mm.
int depth_level(float millimetres) {
  const double depth = std::clamp(millimetres, kNearDepth, kFarDepth);
  return static_cast<int>(255 - ((depth - kNearDepth) / 4000) * 255);
}

// A colour as the bytes of the picture, and one byte more.
using Color = std::uint32_t;
constexpr std::size_t kColorBytes = 3;

std::array<Color, 256> jet_colors() {
  cv::Mat levels(1, 256, CV_8UC1);
  for (int level = 0; level < 256; ++level) {
    levels.at<std::uint8_t>(level) = static_cast<std::uint8_t>(level);
  }
  cv::Mat picture;
  cv::applyColorMap(levels, picture, cv::COLORMAP_JET);
  std::array<Color, 256> colors{};
  for (int level = 0; level < 256; ++level) {
    std::memcpy(&colors[static_cast<std::size_t>(level)], picture.ptr(0, level), kColorBytes);
  }
  return colors;
}

// The colour of every depth. Looking it up takes less time than the division of its level. A step
// is shorter than the 15.7 mm of a level, so no more than two levels meet in it.
class DepthColors {
 public:
  DepthColors() {
    const std::array<Color, 256> colors = jet_colors();
    for (std::size_t i = 0; i < kSteps; ++i) {
      const float start = static_cast<float>(i) * kStep;
      const int nearer = depth_level(start);
      const float split = first_not_of_level(nearer, start, start + kStep);
      steps_[i] = {split,
                   {colors[static_cast<std::size_t>(nearer)],
                    colors[static_cast<std::size_t>(depth_level(split))]}};
    }
  }

  // A pixel that is not a depth gets the colour of the farthest depth.
  Color of(float pixel) const {
    const float depth = is_depth(pixel) ? std::min(pixel, kFarDepth) : kFarDepth;
    const Step& step = steps_[static_cast<std::size_t>(static_cast<int>(depth * (1 / kStep)))];
    return step.colors[static_cast<int>(depth >= step.split)];
  }

 private:
  static constexpr float kStep = 8.0F;  // millimetres; a power of two, so that no product rounds
  static constexpr std::size_t kSteps = static_cast<std::size_t>(kFarDepth / kStep) + 1;

  struct Step {
    float split;      // the first depth with the second colour
    Color colors[2];  // picked by an index, as a branch would often be mispredicted
  };

  // The least float from `start` to `end` whose level is another one; `end` if there is none.
  // Halves the range until its ends are adjacent floats.
  static float first_not_of_level(int level, float start, float end) {
    for (;;) {
      const float middle = start + (end - start) / 2;
      if (middle <= start || middle >= end) return end;
      (depth_level(middle) == level ? start : end) = middle;
    }
  }

  std::array<Step, kSteps> steps_{};
};

bool has_depth(const cv::Mat& millimetres) {
  for (int y = 0; y < millimetres.rows; ++y) {
    const float* row = millimetres.ptr<float>(y);
    if (std::any_of(row, row + millimetres.cols, is_depth)) return true;
  }
  return false;
}

}  // namespace

bool depth_picture(const cv::Mat& millimetres, cv::Mat& picture) {
  static const DepthColors kColors;
  if (!has_depth(millimetres)) return false;
  picture.create(millimetres.size(), CV_8UC3);
  const int last = millimetres.cols - 1;
  cv::parallel_for_(cv::Range(0, millimetres.rows), [&](const cv::Range& rows) {
    for (int y = rows.start; y < rows.end; ++y) {
      const float* from = millimetres.ptr<float>(y);
      std::uint8_t* to = picture.ptr<std::uint8_t>(y);
      // Four bytes at once are faster than three; the next pixel overwrites the fourth.
      for (int x = 0; x < last; ++x, to += kColorBytes) {
        const Color color = kColors.of(from[x]);
        std::memcpy(to, &color, sizeof color);
      }
      const Color color = kColors.of(from[last]);
      std::memcpy(to, &color, kColorBytes);
    }
  });
  return true;
}

}  // namespace halcyra
