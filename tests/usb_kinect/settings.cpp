#include "tests/usb_kinect/settings.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace usb_kinect {
namespace {

// "" for a variable that is not set.
std::string value_of(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string text(const char* name, const std::string& fallback) {
  const std::string value = value_of(name);
  return value.empty() ? fallback : value;
}

double number(const char* name, double fallback, double least, double most) {
  const std::string value = value_of(name);
  if (value.empty()) return fallback;
  char* end = nullptr;
  const double result = std::strtod(value.c_str(), &end);
  if (*end == '\0' && result >= least && result <= most) return result;
  std::fprintf(stderr, "usb_kinect: %s=%s is not a number from %g to %g; %g is used\n", name,
               value.c_str(), least, most, fallback);
  return fallback;
}

long whole_number(const char* name, long fallback, long least) {
  constexpr double kMost = 1e9;
  return static_cast<long>(
      number(name, static_cast<double>(fallback), static_cast<double>(least), kMost));
}

std::vector<std::string> words(const std::string& list) {
  std::vector<std::string> result;
  std::istringstream stream(list);
  for (std::string word; std::getline(stream, word, ',');) {
    if (!word.empty()) result.push_back(word);
  }
  return result;
}

void check_word(const char* name, const std::string& word, const std::vector<std::string>& known) {
  if (word.empty() || std::find(known.begin(), known.end(), word) != known.end()) return;
  std::fprintf(stderr, "usb_kinect: %s=%s is not known (README.md lists the words)\n", name,
               word.c_str());
}

void read_scene(Settings& result) {
  result.color = text("USB_KINECT_COLOR", "");
  result.color_hold_set = std::getenv("USB_KINECT_COLOR_HOLD") != nullptr;
  result.color_hold = whole_number("USB_KINECT_COLOR_HOLD", 1, 1);
  result.depth_mm = number("USB_KINECT_DEPTH_MM", 1500, 0, 18000);
  result.depth_slope = number("USB_KINECT_DEPTH_SLOPE", 600, -18000, 18000);
  result.ir_level = number("USB_KINECT_IR_LEVEL", 4000, 0, 65535);
  result.depth_file = text("USB_KINECT_DEPTH", "");
  result.ir_file = text("USB_KINECT_IR", "");
  result.fps = number("USB_KINECT_FPS", 30, 0.2, 60);
}

void read_start_failures(Settings& result) {
  result.fail_open = text("USB_KINECT_FAIL_OPEN", "");
  check_word("USB_KINECT_FAIL_OPEN", result.fail_open,
             {"init", "permission", "serial", "open", "open-retry", "reset", "reset-again",
              "reset-gone", "configuration", "claim", "control", "usb2"});
  std::istringstream fail_start(text("USB_KINECT_FAIL_START", ""));
  std::getline(fail_start, result.fail_start, ':');
  std::getline(fail_start, result.fail_how);
  check_word("USB_KINECT_FAIL_START", result.fail_start,
             {"function", "firmware", "hardware", "serial", "depth-params", "p0", "color-params",
              "mode", "status", "never-ready", "init", "alt", "stream", "submit", "submit-color",
              "submit-ir", "submit-some"});
  check_word("USB_KINECT_FAIL_START", result.fail_how, {"timeout", "pipe", "short", "missing"});
  result.ready_reads = whole_number("USB_KINECT_READY_READS", 1, 0);
}

void read_stream_faults(Settings& result) {
  result.stall_after = whole_number("USB_KINECT_STALL_AFTER", -1, -1);
  result.stall = text("USB_KINECT_STALL", "all");
  check_word("USB_KINECT_STALL", result.stall, {"all", "color", "depth"});
  result.stall_ms = number("USB_KINECT_STALL_MS", 0, 0, 1e9);
  result.unplug_after = whole_number("USB_KINECT_UNPLUG_AFTER", -1, -1);
  result.corrupt_every = whole_number("USB_KINECT_CORRUPT_EVERY", 0, 0);
  result.corrupt = words(text("USB_KINECT_CORRUPT", "jpeg,footer,short,sub,length,iso,noise"));
  for (const std::string& kind : result.corrupt) {
    check_word("USB_KINECT_CORRUPT", kind,
               {"jpeg", "header", "footer", "short", "noeoi", "big", "sub", "length", "iso",
                "noise", "dark", "transfer"});
  }
}

Settings read_settings() {
  Settings result;
  result.devices = static_cast<int>(number("USB_KINECT_DEVICES", 1, 0, 4));
  result.serial = text("USB_KINECT_SERIAL", "501234542542");
  result.protocol_serial = text("USB_KINECT_PROTOCOL_SERIAL", "");
  result.firmware = text("USB_KINECT_FIRMWARE", "4.0.3911.0");
  result.log = text("USB_KINECT_LOG", "");
  read_scene(result);
  read_start_failures(result);
  read_stream_faults(result);
  return result;
}

}  // namespace

const Settings& settings() {
  // Never destroyed: the log still asks while the process ends.
  static const Settings* const kSettings = new Settings(read_settings());
  return *kSettings;
}

}  // namespace usb_kinect
