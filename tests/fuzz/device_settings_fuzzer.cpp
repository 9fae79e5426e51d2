// A recording's device.yml.
#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/fuzz/memory_file.hpp"
#include "tests/fuzz/requirement.hpp"
#include "virtual_kinect/device_settings.hpp"

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;

void check_usable(const DeviceSettings& settings, const std::string& complaint) {
  require(complaint.empty(), "a usable file is not complained about");
  require(settings.pace >= 0 && settings.pace <= 120, "pace");
  require(settings.lost_percent >= 0 && settings.lost_percent <= 100, "drop");
  require(settings.damaged_percent >= 0 && settings.damaged_percent <= 100, "corrupt");
  require(settings.color_format == Frame::BGRX || settings.color_format == Frame::RGBX,
          "color_format");
}

void check_refused(const DeviceSettings& settings, const std::string& complaint,
                   const std::string& file) {
  const DeviceSettings defaults;
  require(complaint.rfind(file + ": ", 0) == 0, "the complaint names the file first");
  require(complaint.find('\n') == std::string::npos, "the complaint is one line");
  require(settings.pace == defaults.pace && settings.serial == defaults.serial &&
              settings.firmware == defaults.firmware &&
              settings.color_format == defaults.color_format,
          "a refused file changes nothing");
}

}  // namespace
}  // namespace halcyra::virtual_kinect

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halcyra::virtual_kinect;
  const halcyra::MemoryFile file(data, size);
  DeviceSettings settings;
  std::string complaint;
  if (read_device_settings(file.path(), settings, complaint)) {
    check_usable(settings, complaint);
  } else {
    check_refused(settings, complaint, file.path());
  }
  return 0;
}
