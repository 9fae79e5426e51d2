// What a recording's device.yml says about the device that plays it.
#pragma once

#include <filesystem>
#include <string>

#include <libfreenect2/frame_listener.hpp>

namespace halcyra::virtual_kinect {

enum class AfterLastSet {
  kLoop,    // the first follows at once
  kStall,   // nothing more
  kPause,   // nothing for 2.5 seconds, then the first again
  kUnplug,  // nothing more, as when the cable is pulled; `stop` then fails
};

enum class StopOutcome {
  kOk,
  kFail,  // the streams end, but `stop` returns false
  kLate,  // one more set arrives while they end
};

struct DeviceSettings {
  std::string serial = "000000000000";
  std::string firmware = "0.0.0";
  libfreenect2::Frame::Format color_format = libfreenect2::Frame::BGRX;
  int pace = 30;  // sets per second; 0: each set waits for the release of the one before
  AfterLastSet after = AfterLastSet::kLoop;
  bool opens = true;   // false: the device cannot be opened
  bool starts = true;  // false: its streams cannot be started
  StopOutcome stop = StopOutcome::kOk;
  bool closes = true;          // false: `close` returns false
  int lost_percent = 0;        // of each stream's frames: never arrive
  int damaged_percent = 0;     // of each stream's frames: arrive unusable or with arbitrary pixels
  bool counters_wrap = false;  // sequence numbers and time stamps soon overflow
};

// Reads `file` into `settings`; keys that it does not have keep their values, as do all where it is
// missing or empty. False where it cannot be used: the settings stay as they were, and `complaint`
// says why in one line that names the file.
bool read_device_settings(const std::filesystem::path& file, DeviceSettings& settings,
                          std::string& complaint);

}  // namespace halcyra::virtual_kinect
