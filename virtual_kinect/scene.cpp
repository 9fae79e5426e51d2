#include "virtual_kinect/scene.hpp"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "virtual_kinect/complaint.hpp"
#include "virtual_kinect/recording.hpp"
#include "virtual_kinect/room_source.hpp"

namespace halcyra::virtual_kinect {

namespace {

namespace fs = std::filesystem;

// What is wrong with the value, or an empty string.
std::string value_fault(const std::string& value) {
  std::error_code error;
  if (!fs::exists(value, error)) return "there is no such folder";
  if (!fs::is_directory(value, error)) return "that is not a folder";
  return {};
}

}  // namespace

std::optional<Scene> find_scene() {
  const char* variable = std::getenv("VIRTUAL_KINECT");
  const std::string value = variable == nullptr ? "" : variable;
  if (value.empty()) return std::nullopt;
  if (value == "room") {
    return Scene{DeviceSettings{}, [] { return open_room(); }};
  }
  std::string fault = value_fault(value);
  if (!fault.empty()) {
    complain("VIRTUAL_KINECT is \"" + value + "\": " + fault);
    return std::nullopt;
  }
  const fs::path recording = value;
  DeviceSettings settings;
  if (!read_device_settings(recording / "device.yml", settings, fault)) {
    complain(fault);
    return std::nullopt;
  }
  return Scene{settings, [recording, settings] { return open_recording(recording, settings); }};
}

}  // namespace halcyra::virtual_kinect
