#include "record/command_line.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace halcyra::record {
namespace {

constexpr int kMostSeconds = 86'400;

// Whole decimal numbers only: no sign, no blanks, nothing after the digits.
template <typename Number>
bool read_number(const std::string& text, Number least, Number most, Number& value) {
  if (text.empty() || text.front() < '0' || text.front() > '9') return false;
  Number read = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, read);
  if (error != std::errc() || stopped != end || read < least || read > most) return false;
  value = read;
  return true;
}

// Each reader below returns what the value must be, or an empty string if it is.

std::string set_seconds(RecordOptions& options, const std::string& value) {
  const bool valid = read_number<std::uint32_t>(value, 1, kMostSeconds, options.seconds);
  return valid ? "" : "a whole number from 1 to " + std::to_string(kMostSeconds);
}

std::string set_sets(RecordOptions& options, const std::string& value) {
  options.sets_given = true;
  const bool valid = read_number<std::uint32_t>(value, 1, kMostSets, options.sets);
  return valid ? "" : "a whole number from 1 to " + std::to_string(kMostSets);
}

std::string set_streams(RecordOptions& options, const std::string& value) {
  options.streams = {};
  std::size_t start = 0;
  while (start <= value.size()) {
    const std::size_t end = std::min(value.find(',', start), value.size());
    std::size_t stream = 0;
    while (stream < kStreams && value.substr(start, end - start) != kStreamNames[stream]) ++stream;
    if (stream == kStreams) return "one or more of color, ir and depth, with commas between them";
    options.streams[stream] = true;
    start = end + 1;
  }
  return "";
}

std::string set_color(RecordOptions& options, const std::string& value) {
  if (value != "jpeg" && value != "png") return "jpeg or png";
  options.color = value == "png" ? ColorFiles::kPng : ColorFiles::kJpeg;
  return "";
}

std::string set_jpeg_quality(RecordOptions& options, const std::string& value) {
  return read_number(value, 1, 100, options.jpeg_quality) ? "" : "a whole number from 1 to 100";
}

struct ValueOption {
  std::string_view name;
  std::string (*apply)(RecordOptions& options, const std::string& value);
};

constexpr std::array<ValueOption, 5> kValueOptions = {{
    {"--seconds", set_seconds},
    {"--sets", set_sets},
    {"--streams", set_streams},
    {"--color", set_color},
    {"--jpeg-quality", set_jpeg_quality},
}};

std::string apply_value(const ValueOption& option, RecordOptions& options,
                        const std::vector<std::string>& arguments, std::size_t& next) {
  const std::string name(option.name);
  if (next == arguments.size()) return name + " needs a value";
  const std::string& value = arguments[next++];
  const std::string needed = option.apply(options, value);
  return needed.empty() ? "" : name + " must be " + needed + ", not \"" + value + "\"";
}

std::string apply_folder(const std::string& argument, RecordOptions& options) {
  if (argument.empty()) return "the folder has an empty name";
  if (!options.folder.empty()) return "a second folder is named, \"" + argument + "\"";
  options.folder = argument;
  return "";
}

std::string apply_next(const std::vector<std::string>& arguments, std::size_t& next,
                       RecordOptions& options) {
  const std::string& argument = arguments[next++];
  for (const ValueOption& option : kValueOptions) {
    if (argument == option.name) return apply_value(option, options, arguments, next);
  }
  if (argument == "--anonymous") {
    options.anonymous = true;
    return "";
  }
  if (argument.rfind('-', 0) == 0) return "there is no option \"" + argument + "\"";
  return apply_folder(argument, options);
}

std::string missing_or_excluded(const RecordOptions& options) {
  if (options.folder.empty()) return "no folder is named";
  if (options.seconds > 0 && options.sets_given) return "--seconds and --sets exclude each other";
  return "";
}

}  // namespace

CommandLine parse_command_line(const std::vector<std::string>& arguments) {
  CommandLine line;
  std::size_t next = 0;
  while (next < arguments.size() && line.fault.empty()) {
    const std::string& argument = arguments[next];
    if (argument == "--help" || argument == "-h") {
      line.request = Request::kHelp;
      return line;
    }
    if (argument == "--version") {
      line.request = Request::kVersion;
      return line;
    }
    line.fault = apply_next(arguments, next, line.options);
  }
  if (line.fault.empty()) line.fault = missing_or_excluded(line.options);
  if (!line.fault.empty()) line.request = Request::kWrongUse;
  return line;
}

std::string usage() {
  return "Usage: halcyra-record FOLDER [OPTION]...\n"
         "  Records what the Kinect v2 delivers in FOLDER, which must be new or empty, until\n"
         "  Ctrl-C.\n"
         "  --seconds S           end S seconds after the first set, 1 to 86400\n"
         "  --sets N              end after N sets, 1 to 999999\n"
         "  --streams LIST        the streams to record, color,ir,depth by default; playing a\n"
         "                        recording needs all three\n"
         "  --color jpeg|png      files of the colour pictures; png is lossless and slower;\n"
         "                        jpeg by default. Infrared and depth are always lossless\n"
         "  --jpeg-quality Q      1 to 100; 95 by default\n"
         "  --anonymous           leave out the sensor's serial number\n"
         "  -h, --help            show this text\n"
         "  --version             show the version\n";
}

}  // namespace halcyra::record
