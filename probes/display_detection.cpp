#include "probes/display_detection.hpp"

#include "probes/display_reports.hpp"
#include "probes/shell_command.hpp"

namespace halcyra {

DisplayInfo detect_display() {
  DisplayInfo display;
  if (read_xrandr(run_capture("xrandr --current"), display)) return display;
  read_xdpyinfo(run_capture("xdpyinfo"), display);
  return display;
}

}  // namespace halcyra
