#include "virtual_kinect/device_settings.hpp"

#include <algorithm>
#include <cstring>
#include <exception>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include <opencv2/core/persistence.hpp>

#include "virtual_kinect/file_bytes.hpp"
#include "virtual_kinect/single_document.hpp"

namespace halcyra::virtual_kinect {

namespace {

using libfreenect2::Frame;

constexpr const char* kNotAMap = "cannot be read as one map of keys and values";
constexpr int kMostPace = 120;

// Each reader below returns what is wrong with the value, or an empty string.

std::string read_text(const cv::FileNode& node, std::string& value) {
  if (!node.isString()) return "must be text (in quotes where it looks like a number)";
  value = node.string();
  return {};
}

std::string read_number(const cv::FileNode& node, int most, int& value) {
  if (!node.isInt() || static_cast<int>(node) < 0 || static_cast<int>(node) > most) {
    return "must be a whole number from 0 to " + std::to_string(most);
  }
  value = static_cast<int>(node);
  return {};
}

template <typename Value>
using Choices = std::vector<std::pair<const char*, Value>>;

template <typename Value>
std::string read_choice(const cv::FileNode& node, const Choices<Value>& choices, Value& value) {
  std::string words;
  for (const auto& [word, meaning] : choices) {
    if (node.isString() && node.string() == word) {
      value = meaning;
      return {};
    }
    words.append(words.empty() ? "" : " or ").append(word);
  }
  return "must be " + words;
}

std::string read_flag(const cv::FileNode& node, const char* yes, const char* no, bool& value) {
  return read_choice(node, Choices<bool>{{yes, true}, {no, false}}, value);
}

std::string read_after(const cv::FileNode& node, AfterLastSet& value) {
  return read_choice(node,
                     Choices<AfterLastSet>{{"loop", AfterLastSet::kLoop},
                                           {"stall", AfterLastSet::kStall},
                                           {"pause", AfterLastSet::kPause},
                                           {"unplug", AfterLastSet::kUnplug}},
                     value);
}

std::string read_stop(const cv::FileNode& node, StopOutcome& value) {
  return read_choice(
      node,
      Choices<StopOutcome>{
          {"ok", StopOutcome::kOk}, {"fail", StopOutcome::kFail}, {"late", StopOutcome::kLate}},
      value);
}

std::string read_color_format(const cv::FileNode& node, Frame::Format& value) {
  return read_choice(node, Choices<Frame::Format>{{"BGRX", Frame::BGRX}, {"RGBX", Frame::RGBX}},
                     value);
}

std::string read_value(const cv::FileNode& node, DeviceSettings& settings) {
  const std::string key = node.name();
  if (key == "serial") return read_text(node, settings.serial);
  if (key == "firmware") return read_text(node, settings.firmware);
  if (key == "color_format") return read_color_format(node, settings.color_format);
  if (key == "pace") return read_number(node, kMostPace, settings.pace);
  if (key == "after") return read_after(node, settings.after);
  if (key == "open") return read_flag(node, "ok", "fail", settings.opens);
  if (key == "start") return read_flag(node, "ok", "fail", settings.starts);
  if (key == "stop") return read_stop(node, settings.stop);
  if (key == "close") return read_flag(node, "ok", "fail", settings.closes);
  if (key == "drop") return read_number(node, 100, settings.lost_percent);
  if (key == "corrupt") return read_number(node, 100, settings.damaged_percent);
  if (key == "counters") return read_flag(node, "wrap", "zero", settings.counters_wrap);
  return "is not a known key";
}

// FileStorage wants a version line first, which nobody writes by hand. It also appends an end
// marker, which it then takes for the value of a last key without one, unless the text has a marker
// itself.
std::string storage_text(std::string text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0) {
    text.erase(0, kByteOrderMark.size());
  }
  if (text.rfind("%YAML", 0) != 0) text.insert(0, "%YAML:1.0\n");
  return text + "\n...\n";
}

// Whether a key may begin at `at`: at the beginning of a line, behind the start marker, or in
// braces.
bool may_be_key(const std::string& text, std::size_t at) {
  constexpr std::string_view kStartMarker = "\n---";
  const std::size_t before = text.find_last_not_of(' ', at - 1);
  if (before == std::string::npos || std::strchr("\n{,", text[before]) != nullptr) return true;
  const std::size_t marker = before + 1 - std::min(before + 1, kStartMarker.size());
  return text.compare(marker, kStartMarker.size(), kStartMarker) == 0;
}

// Where the value of the key that ends at `at` begins, behind tags and comments.
std::size_t value_of_key(const std::string& text, std::size_t at) {
  constexpr const char* kNoValue = " \r\n:+-";
  std::size_t value = text.find_first_not_of(kNoValue, at);
  while (value != std::string::npos && (text[value] == '!' || text[value] == '#')) {
    const char* const end = text[value] == '#' ? "\n" : " \r\n";
    value = text.find_first_not_of(kNoValue, text.find_first_of(end, value));
  }
  return value;
}

bool has_too_many_digits(const std::string& text, const std::string& key) {
  constexpr std::size_t kMostDigits = 9;
  for (std::size_t at = text.find(key); at != std::string::npos; at = text.find(key, at + 1)) {
    const std::size_t digits = value_of_key(text, at + key.size());
    const std::size_t end = text.find_first_not_of("0123456789abcdefABCDEFxX", digits);
    if (may_be_key(text, at) && digits != std::string::npos && end - digits > kMostDigits) {
      return true;
    }
  }
  return false;
}

// FileStorage keeps the low 32 bits of an integer, so a number far out of range can come out as one
// in range.
std::string overflow_fault(const std::string& text) {
  for (const std::string key : {"pace", "drop", "corrupt"}) {
    if (has_too_many_digits(text, key)) return "\"" + key + "\" has too many digits";
  }
  return {};
}

std::string read_map(const cv::FileNode& root, DeviceSettings& settings) {
  std::set<std::string> seen;
  for (const cv::FileNode& node : root) {
    const std::string key = node.name();
    const std::string fault =
        seen.insert(key).second ? read_value(node, settings) : "stands there twice";
    if (!fault.empty()) return std::string("\"").append(key).append("\" ").append(fault);
  }
  return {};
}

std::string read_settings(const std::string& text, DeviceSettings& settings) {
  const std::string document = storage_text(text);
  if (text.find('\0') != std::string::npos || !is_single_document(document)) return kNotAMap;
  try {
    const cv::FileStorage storage(document, cv::FileStorage::READ | cv::FileStorage::MEMORY);
    const cv::FileNode root = storage.root();
    if (!(root.isMap() || root.isNone()) || !storage.root(1).empty()) return kNotAMap;
    const std::string fault = read_map(root, settings);
    return fault.empty() ? overflow_fault(document) : fault;
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
