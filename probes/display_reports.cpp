#include "probes/display_reports.hpp"

#include <re2/re2.h>

namespace halcyra {
namespace {

// Sets `display` from the first match of the expression, whose two groups are width and height.
// False without a match, or if a number does not fit into an int.
bool read_size(const std::string& output, const re2::RE2& expression, const std::string& source,
               DisplayInfo& display) {
  std::int32_t width = 0;
  std::int32_t height = 0;
  if (!re2::RE2::PartialMatch(output, expression, &width, &height)) return false;
  display = {width, height, source};
  return true;
}

}  // namespace

bool read_xrandr(const std::string& output, DisplayInfo& display) {
  static const re2::RE2 kActiveMode(R"((?: connected primary | connected )(\d+)x(\d+)\+)",
                                    re2::RE2::Latin1);
  static const re2::RE2 kWholeScreen(R"(current[\s\v]+(\d+)[\s\v]+x[\s\v]+(\d+))",
                                     re2::RE2::Latin1);
  return read_size(output, kActiveMode, "xrandr", display) ||
         read_size(output, kWholeScreen, "xrandr", display);
}

bool read_xdpyinfo(const std::string& output, DisplayInfo& display) {
  static const re2::RE2 kDimensions(R"(dimensions:[\s\v]+(\d+)x(\d+)[\s\v]+pixels)",
                                    re2::RE2::Latin1);
  return read_size(output, kDimensions, "xdpyinfo", display);
}

}  // namespace halcyra
