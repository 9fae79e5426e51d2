// The colour picture that the sensor sends where it is given none.
#pragma once

#include "tests/usb_kinect/bytes.hpp"

namespace usb_kinect {

constexpr int kColorWidth = 1920;
constexpr int kColorHeight = 1080;

// Colour bars over a grey ramp, with a white square in one of four places (`phase` 0 to 3). RGB,
// 1920x1080.
Bytes color_pattern(int phase);

}  // namespace usb_kinect
