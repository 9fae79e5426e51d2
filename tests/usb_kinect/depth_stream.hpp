// The infrared and depth stream: each frame is ten sub-images in packets of isochronous transfers.
#pragma once

#include "tests/usb_kinect/sensor.hpp"
#include "tests/usb_kinect/transfers.hpp"

namespace usb_kinect {

constexpr std::uint8_t kDepthEndpoint = 0x84;
constexpr std::size_t kIsochronousPacket = 0x8400;  // bytes

// Fills and ends the transfers whose time it is. A frame that begins too late is left out.
void send_depth(Sensor& sensor, Time now, Transfers& done);

}  // namespace usb_kinect
