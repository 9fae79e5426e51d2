#include "tests/usb_kinect/sensor.hpp"

#include <algorithm>
#include <cmath>

#include "tests/usb_kinect/settings.hpp"

namespace usb_kinect {
namespace {

double period_ms() { return 1000.0 / settings().fps; }

}  // namespace

Time due(const Sensor& sensor, double frame) { return in_ms(sensor.start, frame * period_ms()); }

std::int64_t current_frame(const Sensor& sensor, Time now) {
  return static_cast<std::int64_t>(std::floor(ms_between(sensor.start, now) / period_ms()));
}

std::uint32_t time_stamp(const Sensor& sensor, std::int64_t frame) {
  constexpr std::int64_t kFirst = 8000;
  constexpr double kUnitsPerMs = 8.0;
  const auto number = static_cast<double>(sensor.first_sequence + frame);
  return static_cast<std::uint32_t>(kFirst + std::llround(number * kUnitsPerMs * period_ms()));
}

void begin_streams(Sensor& sensor) {
  constexpr double kStartDelayMs = 30;
  end_streams(sensor);
  const Time now = Clock::now();
  sensor.streaming = true;
  sensor.start = in_ms(now, kStartDelayMs);
  sensor.stall_noted = false;
  sensor.color.next_frame = 0;
  sensor.depth.next_tick = now;
  sensor.depth.frame = 0;
  sensor.depth.sub_image = 0;
  sensor.depth.sent = 0;
  sensor.depth.stalled = false;
}

void end_streams(Sensor& sensor) {
  if (!sensor.streaming) return;
  sensor.streaming = false;
  sensor.first_sequence += std::max(sensor.color.next_frame, sensor.depth.frame) + 1;
  sensor.color.busy = false;
  sensor.color.packet.clear();
}

}  // namespace usb_kinect
