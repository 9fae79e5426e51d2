#include "tests/usb_kinect/color_pattern.hpp"

#include <array>

namespace usb_kinect {
namespace {

using Rgb = std::array<std::uint8_t, 3>;

constexpr int kBarsEnd = 800;  // the row below the bars
constexpr int kSquareTop = 880;
constexpr int kSquareSize = 160;

Rgb grey(int level) { return {byte(level), byte(level), byte(level)}; }

Rgb pixel_of_pattern(int x, int y, int square_left) {
  static constexpr Rgb kBars[] = {{235, 235, 235}, {235, 235, 16}, {16, 235, 235}, {16, 235, 16},
                                  {235, 16, 235},  {235, 16, 16},  {16, 16, 235},  {16, 16, 16}};
  constexpr int kBarWidth = kColorWidth / 8;
  const bool in_square = y >= kSquareTop && y < kSquareTop + kSquareSize && x >= square_left &&
                         x < square_left + kSquareSize;
  if (in_square) return grey(255);
  if (y < kBarsEnd) return kBars[x / kBarWidth];
  return grey(x * 255 / (kColorWidth - 1));
}

}  // namespace

Bytes color_pattern(int phase) {
  Bytes result;
  result.reserve(std::size_t{kColorWidth} * kColorHeight * 3);
  for (int y = 0; y < kColorHeight; ++y) {
    for (int x = 0; x < kColorWidth; ++x) {
      const Rgb pixel = pixel_of_pattern(x, y, 160 + 480 * phase);
      result.insert(result.end(), pixel.begin(), pixel.end());
    }
  }
  return result;
}

}  // namespace usb_kinect
