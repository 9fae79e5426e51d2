// Finds the screen size with the X tools of a Linux desktop.
#pragma once

#include "probes/display_info.hpp"

namespace halcyra {

// Asks "xrandr --current", then "xdpyinfo". Never fails: without a usable answer the result is
// 1280 x 720 from "fallback". A number too large for an int is not usable. Blocks while they run.
DisplayInfo detect_display();

}  // namespace halcyra
