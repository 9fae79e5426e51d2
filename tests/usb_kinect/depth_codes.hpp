// What the sensor's time-of-flight camera measures of a scene, in the form in which it sends it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/usb_kinect/bytes.hpp"

namespace usb_kinect {

constexpr int kDepthWidth = 512;
constexpr int kDepthHeight = 424;
constexpr std::size_t kDepthPixels = std::size_t{kDepthWidth} * kDepthHeight;
constexpr int kSubImages = 10;                                 // of a frame
constexpr std::size_t kSubImageBytes = kDepthPixels * 11 / 8;  // 11 bits for each pixel

// Lens of the time-of-flight camera, as stored in the sensor.
struct Lens {
  float fx = 366.10F;
  float fy = 366.10F;
  float cx = 257.40F;
  float cy = 205.60F;
  float k1 = 0.0905F;
  float k2 = -0.2700F;
  float k3 = 0.0940F;
  float p1 = 0.0F;
  float p2 = 0.0F;
};

// Millimetres (0 for no distance) and infrared values (0 to 65535), both 512x424 in the orientation
// in which a reader finally sees them, row 0 at the top.
struct DepthPicture {
  std::vector<float> depth = std::vector<float>(kDepthPixels);
  std::vector<float> infrared = std::vector<float>(kDepthPixels);
};

// The phase offset of a modulation frequency (0 to 2) that the sensor stores. It depends on the
// column only, so that it does not matter whether a reader flips the rows.
std::uint16_t phase_offset(int frequency, int column);

// A plane that faces the sensor: `middle_mm` in the middle, `slope_mm` more on the right edge than
// on the left one; infrared from half the level at the top to the level at the bottom.
DepthPicture plane(double middle_mm, double slope_mm, double infrared_level);

// The ten sub-images of a frame, one after another, that decode to the picture. Columns 0 and 511
// stay empty, since readers do not decode them.
Bytes encode_depth(const DepthPicture& picture, const Lens& lens);

}  // namespace usb_kinect
