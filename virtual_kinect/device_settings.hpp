// What a recording's device.yml says about the device that plays it.
#pragma once

#include <filesystem>
#include <string>

#include <libfreenect2/frame_listener.hpp>

namespace halcyra::virtual_kinect {

struct DeviceSettings {
  std::string serial = "000000000000";
  std::string firmware = "0.0.0";
  libfreenect2::Frame::Format color_format = libfreenect2::Frame::BGRX;
  int pace = 30;       // sets per second; 0: each set waits for the release of the one before
  bool loops = true;   // after the last set: start again, or deliver nothing more
  bool opens = true;   // false: the device cannot be opened
  bool starts = true;  // false: its streams cannot be started
};

// Reads `file` over the defaults; a missing or empty file leaves them. False: the file cannot be
// used, and `complaint` says why in one sentence that names the file.
bool read_device_settings(const std::filesystem::path& file, DeviceSettings& settings,
                          std::string& complaint);

}  // namespace halcyra::virtual_kinect
