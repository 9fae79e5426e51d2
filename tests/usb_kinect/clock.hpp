// The sensor's time.
#pragma once

#include <chrono>

namespace usb_kinect {

using Clock = std::chrono::steady_clock;
using Time = Clock::time_point;

inline Time in_ms(Time from, double milliseconds) {
  const std::chrono::duration<double, std::milli> span(milliseconds);
  return from + std::chrono::duration_cast<Clock::duration>(span);
}

inline double ms_between(Time from, Time to) {
  return std::chrono::duration<double, std::milli>(to - from).count();
}

}  // namespace usb_kinect
