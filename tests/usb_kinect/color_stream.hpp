// The colour stream: each frame is a JPEG in a packet of its own, which fills bulk transfers.
#pragma once

#include "tests/usb_kinect/sensor.hpp"
#include "tests/usb_kinect/transfers.hpp"

namespace usb_kinect {

constexpr std::uint8_t kColorEndpoint = 0x83;

// Fills and ends the transfers whose time it is. Frames that nobody fetches in time are left out.
void send_color(Sensor& sensor, Time now, Transfers& done);

}  // namespace usb_kinect
