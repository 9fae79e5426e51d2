// Reads the screen size from the output of the X tools. Runs nothing.
#pragma once

#include <string>

#include "probes/display_info.hpp"

namespace halcyra {

// Sets `display` to the size in the output of "xrandr --current": that of the first connected
// output with a mode, else that of the whole screen. False, with `display` untouched, if there is
// none. The text may hold any bytes. A number too large for an int counts as none.
bool read_xrandr(const std::string& output, DisplayInfo& display);

// The same for the output of "xdpyinfo" and its first screen.
bool read_xdpyinfo(const std::string& output, DisplayInfo& display);

}  // namespace halcyra
