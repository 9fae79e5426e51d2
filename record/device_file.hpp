// The text of device.yml, which tells the virtual Kinect about the sensor of a recording.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "record/recorded_set.hpp"

namespace halcyra::record {

struct DeviceDescription {
  std::optional<std::string> serial;  // nothing: it is left out
  std::string firmware;
  PixelLayout color = PixelLayout::kBgrx;  // kRgbx: the sensor delivered red first
  int pace = 30;                           // sets per second
};

// Texts are quoted. Control characters in them, which the file cannot hold, become '?', and what
// comes after their first 1000 bytes is left out.
std::string device_file_text(const DeviceDescription& device);

// The rounded pace of `sets` sets of which the last came `seconds` after the first, 1 to 120; 30
// where there are too few to tell.
int measured_pace(std::uint32_t sets, double seconds);

}  // namespace halcyra::record
