// Which frames are damaged or held back.
#pragma once

#include <cstdint>
#include <string>

#include "tests/usb_kinect/sensor.hpp"

namespace usb_kinect {

enum class Stream { kColor, kDepth };

// The kind of damage to a frame, a word of USB_KINECT_CORRUPT; "" for none.
std::string damage_to(Stream stream, std::int64_t frame);

// Whether the stream sends nothing of the frame. Notes the first frame that is held back.
bool stalls(Sensor& sensor, Stream stream, std::int64_t frame, Time now);

}  // namespace usb_kinect
