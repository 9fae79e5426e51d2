#include "record/device_file.hpp"

#include <algorithm>
#include <cmath>

namespace halcyra::record {
namespace {

constexpr std::size_t kLongestText = 1000;  // OpenCV's reader takes about 4000 bytes
constexpr int kUsualPace = 30;
constexpr int kMostPace = 120;

bool is_control(char byte) { return static_cast<unsigned char>(byte) < ' ' || byte == '\x7F'; }

std::string quoted(const std::string& text) {
  std::string result = "\"";
  for (const char byte : text.substr(0, kLongestText)) {
    if (byte == '"' || byte == '\\') result += '\\';
    result += is_control(byte) ? '?' : byte;
  }
  return result + "\"";
}

}  // namespace

std::string device_file_text(const DeviceDescription& device) {
  std::string text = "%YAML:1.0\n---\n";
  if (device.serial) text += "serial: " + quoted(*device.serial) + "\n";
  text += "firmware: " + quoted(device.firmware) + "\n";
  text += std::string("color_format: ") + (device.color == PixelLayout::kRgbx ? "RGBX" : "BGRX");
  return text + "\npace: " + std::to_string(device.pace) + "\n";
}

int measured_pace(std::uint32_t sets, double seconds) {
  if (sets < 2 || seconds <= 0.0) return kUsualPace;
  return static_cast<int>(std::clamp(std::round((sets - 1) / seconds), 1.0, double{kMostPace}));
}

}  // namespace halcyra::record
