// What xrandr and xdpyinfo print, read one after the other as the program does.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "probes/display_reports.hpp"
#include "tests/fuzz/requirement.hpp"
#include "tests/fuzz/text_input.hpp"

namespace halcyra {
namespace {

void check_untouched(const DisplayInfo& display) {
  require(display.width == 1280 && display.height == 720 && display.source == "fallback",
          "what tells no size changes nothing");
}

// A number of the text has no more digits than the text itself, but for leading zeros.
bool stands_in(const std::string& text, std::int32_t number) {
  return number >= 0 && text.find(std::to_string(number)) != std::string::npos;
}

void check_size(const DisplayInfo& display, const std::string& output, const std::string& source) {
  require(stands_in(output, display.width), "the width stands in the output");
  require(stands_in(output, display.height), "the height stands in the output");
  require(display.source == source, "the source is the tool");
}

}  // namespace
}  // namespace halcyra

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halcyra;
  const std::vector<std::string> outputs = texts_of(data, size, 2);
  DisplayInfo display;
  if (read_xrandr(outputs[0], display)) {
    check_size(display, outputs[0], "xrandr");
    return 0;
  }
  check_untouched(display);
  if (read_xdpyinfo(outputs[1], display)) {
    check_size(display, outputs[1], "xdpyinfo");
  } else {
    check_untouched(display);
  }
  return 0;
}
