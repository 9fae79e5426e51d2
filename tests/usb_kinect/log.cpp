#include "tests/usb_kinect/log.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <string>

#include "tests/usb_kinect/clock.hpp"
#include "tests/usb_kinect/sensor.hpp"
#include "tests/usb_kinect/settings.hpp"

namespace usb_kinect {
namespace {

int open_log(const std::string& file) {
  if (file.empty()) return -1;
  if (file == "-") return STDERR_FILENO;
  return open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
}

// -1 without a log.
int log_descriptor() {
  static const int kDescriptor = open_log(settings().log);
  return kDescriptor;
}

[[gnu::format(printf, 1, 0)]] std::string formatted(const char* format, std::va_list arguments) {
  char text[512];
  std::vsnprintf(text, sizeof text, format, arguments);
  return text;
}

void write_line(const std::string& text) {
  static const Time kBegin = Clock::now();
  char start[32];
  std::snprintf(start, sizeof start, "usb_kinect %10.3f ", ms_between(kBegin, Clock::now()));
  // In one call, so that lines of several threads do not mix. A log that cannot be written is lost.
  const std::string line = start + text + '\n';
  if (write(log_descriptor(), line.data(), line.size()) < 0) return;
}

}  // namespace

void note(const char* format, ...) {
  if (log_descriptor() < 0) return;
  std::va_list arguments;
  va_start(arguments, format);
  const std::string text = formatted(format, arguments);
  va_end(arguments);
  write_line(text);
}

void note_misuse(Sensor* sensor, const char* format, ...) {
  if (sensor != nullptr) ++sensor->misuse;
  if (log_descriptor() < 0) return;
  std::va_list arguments;
  va_start(arguments, format);
  const std::string text = formatted(format, arguments);
  va_end(arguments);
  write_line("MISUSE " + text);
}

}  // namespace usb_kinect
