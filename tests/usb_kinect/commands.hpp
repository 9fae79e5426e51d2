// The command protocol: a command on one bulk endpoint, its answers on another.
#pragma once

#include <cstddef>
#include <cstdint>

#include "tests/usb_kinect/sensor.hpp"

namespace usb_kinect {

constexpr std::uint8_t kCommandEndpoint = 0x02;
constexpr std::uint8_t kAnswerEndpoint = 0x81;

// Runs a command block of `size` bytes and replaces the sensor's answers by those to it.
void run_command(Sensor& sensor, const std::uint8_t* block, std::size_t size);

}  // namespace usb_kinect
