// Reads the screen size out of what the X tools print. Runs nothing.
#pragma once

#include <string>

#include "probes/display_info.hpp"

namespace halcyra {

// Whether the output of "xrandr --current" tells a size, which `display` is then set to: that of
// the first connected output with a mode, else that of the whole screen. `display` is untouched
// otherwise. The text may hold any bytes; a number too large for an int is none.
bool read_xrandr(const std::string& output, DisplayInfo& display);

// The same for the output of "xdpyinfo" and its first screen.
bool read_xdpyinfo(const std::string& output, DisplayInfo& display);

}  // namespace halcyra
