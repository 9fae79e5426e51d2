#include "probes/display_detection.hpp"

#include <re2/re2.h>

#include "probes/shell_command.hpp"

namespace halcyra {
namespace {

// True when the output shows a size that the expression's two groups name.
bool read_size(const std::string& output, const re2::RE2& expression, const std::string& source,
               DisplayInfo& display) {
  std::int32_t width = 0;
  std::int32_t height = 0;
  if (!re2::RE2::PartialMatch(output, expression, &width, &height)) return false;
  display = {width, height, source};
  return true;
}

}  // namespace

DisplayInfo detect_display() {
  static const re2::RE2 kActiveMode(R"((?: connected primary | connected )(\d+)x(\d+)\+)",
                                    re2::RE2::Latin1);
  static const re2::RE2 kWholeScreen(R"(current[\s\v]+(\d+)[\s\v]+x[\s\v]+(\d+))",
                                     re2::RE2::Latin1);
  static const re2::RE2 kDimensions(R"(dimensions:[\s\v]+(\d+)x(\d+)[\s\v]+pixels)",
                                    re2::RE2::Latin1);
  DisplayInfo display;
  const std::string outputs = run_capture("xrandr --current");
  if (read_size(outputs, kActiveMode, "xrandr", display)) return display;
  if (read_size(outputs, kWholeScreen, "xrandr", display)) return display;
  read_size(run_capture("xdpyinfo"), kDimensions, "xdpyinfo", display);
  return display;
}

}  // namespace halcyra
