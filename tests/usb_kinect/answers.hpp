// What the sensor says about itself. The calibration is plausible, not that of a real unit.
#pragma once

#include <string>

#include "tests/usb_kinect/bytes.hpp"

namespace usb_kinect {

// `version` is four numbers between dots; missing ones are 0.
Bytes firmware_answer(const std::string& version);

// The first 63 characters of the serial number.
Bytes serial_answer(const std::string& serial);

// The lens of the time-of-flight camera.
Bytes depth_lens_answer();

// The phase offsets of the three modulation frequencies.
Bytes phase_offsets_answer();

// The lens of the colour camera, and where its picture lies in the other camera's.
Bytes color_lens_answer();

}  // namespace usb_kinect
