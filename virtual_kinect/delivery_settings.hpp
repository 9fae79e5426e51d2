// How a sensor delivers: how fast, and how reliably.
#pragma once

#include <cstdint>

namespace halcyra::virtual_kinect {

struct DeliverySettings {
  int pace = 30;            // sets per second; 0: each set waits for the release of the one before
  bool resumes = false;     // after the last set: a pause, then all sets again
  int lost_percent = 0;     // of the frames of each stream, 0 to 100
  int damaged_percent = 0;  // likewise
  std::uint32_t first_sequence = 0;
  std::uint32_t first_timestamp = 0;  // in 0.125 ms, as all time stamps
};

}  // namespace halcyra::virtual_kinect
