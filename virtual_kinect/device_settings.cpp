#include "virtual_kinect/device_settings.hpp"

#include <exception>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include <opencv2/core/persistence.hpp>

#include "virtual_kinect/file_bytes.hpp"

namespace halcyra::virtual_kinect {

namespace {

using libfreenect2::Frame;

constexpr const char* kNotAMap = "cannot be read as one map of keys and values";

// Each reader below returns what is wrong with the value, or an empty string.

std::string read_text(const cv::FileNode& node, std::string& value) {
  if (!node.isString()) {
    return "must be text (in quotes where it looks like a number)";
  }
  value = node.string();
  return {};
}

std::string read_pace(const cv::FileNode& node, int& value) {
  if (!node.isInt() || static_cast<int>(node) < 0 || static_cast<int>(node) > 120) {
    return "must be a whole number from 0 to 120";
  }
  value = static_cast<int>(node);
  return {};
}

template <typename Value>
std::string read_choice(const cv::FileNode& node, const std::pair<const char*, Value>& first,
                        const std::pair<const char*, Value>& second, Value& value) {
  for (const auto& [word, meaning] : {first, second}) {
    if (node.isString() && node.string() == word) {
      value = meaning;
      return {};
    }
  }
  return std::string("must be ") + first.first + " or " + second.first;
}

std::string read_value(const cv::FileNode& node, DeviceSettings& settings) {
  using Flag = std::pair<const char*, bool>;
  using Order = std::pair<const char*, Frame::Format>;
  const std::string key = node.name();
  if (key == "serial") return read_text(node, settings.serial);
  if (key == "firmware") return read_text(node, settings.firmware);
  if (key == "color_format") {
    return read_choice(node, Order("BGRX", Frame::BGRX), Order("RGBX", Frame::RGBX),
                       settings.color_format);
  }
  if (key == "pace") return read_pace(node, settings.pace);
  if (key == "after") {
    return read_choice(node, Flag("loop", true), Flag("stall", false), settings.loops);
  }
  if (key == "open") {
    return read_choice(node, Flag("ok", true), Flag("fail", false), settings.opens);
  }
  if (key == "start") {
    return read_choice(node, Flag("ok", true), Flag("fail", false), settings.starts);
  }
  return "is not a known key";
}

// FileStorage wants a version line first, which nobody writes by hand, and takes its own end marker
// for the value of a last key that has none unless the text brings a marker itself.
std::string storage_text(std::string text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0) {
    text.erase(0, kByteOrderMark.size());
  }
  if (text.rfind("%YAML", 0) != 0) {
    text.insert(0, "%YAML:1.0\n");
  }
  return text + "\n...\n";
}

// FileStorage keeps the low 32 bits of an integer, so that a pace far out of range can come out
// inside it.
bool pace_overflows(const std::string& text) {
  constexpr std::string_view kKey = "pace";
  constexpr std::size_t kMostDigits = 9;
  for (std::size_t at = text.find(kKey); at != std::string::npos; at = text.find(kKey, at + 1)) {
    const bool starts_line = text.find_last_of('\n', at) == text.find_last_not_of(' ', at - 1);
    const std::size_t digits = text.find_first_not_of(" \r\n:+-", at + kKey.size());
    const std::size_t end = text.find_first_not_of("0123456789abcdefABCDEFxX", digits);
    if (starts_line && digits != std::string::npos && end - digits > kMostDigits) {
      return true;
    }
  }
  return false;
}

std::string read_map(const cv::FileNode& root, DeviceSettings& settings) {
  std::set<std::string> seen;
  for (const cv::FileNode& node : root) {
    const std::string key = node.name();
    const std::string fault =
        seen.insert(key).second ? read_value(node, settings) : "stands there twice";
    if (!fault.empty()) {
      return std::string("\"").append(key).append("\" ").append(fault);
    }
  }
  return {};
}

std::string read_settings(const std::string& text, DeviceSettings& settings) {
  if (text.find('\0') != std::string::npos) {
    return kNotAMap;
  }
  try {
    const std::string document = storage_text(text);
    const cv::FileStorage storage(document, cv::FileStorage::READ | cv::FileStorage::MEMORY);
    const cv::FileNode root = storage.root();
    if (!(root.isMap() || root.isNone()) || !storage.root(1).empty()) {
      return kNotAMap;
    }
    const std::string fault = read_map(root, settings);
    return fault.empty() && pace_overflows(document) ? "\"pace\" has too many digits" : fault;
  } catch (const std::exception&) {
    return kNotAMap;
  }
}

}  // namespace

bool read_device_settings(const std::filesystem::path& file, DeviceSettings& settings,
                          std::string& complaint) {
  std::error_code error;
  if (std::filesystem::symlink_status(file, error).type() ==
      std::filesystem::file_type::not_found) {
    return true;
  }
  const std::optional<std::string> text = read_file(file);
  DeviceSettings read = settings;
  const std::string fault = text ? read_settings(*text, read) : "cannot be opened";
  if (!fault.empty()) {
    complaint = file.string() + ": " + fault;
    return false;
  }
  settings = read;
  return true;
}

}  // namespace halcyra::virtual_kinect
