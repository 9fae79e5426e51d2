// Finds the screen size by asking the X tools that a Linux desktop usually has.
#pragma once

#include "probes/display_info.hpp"

namespace halcyra {

// Asks "xrandr --current", then "xdpyinfo". Never fails: without a usable answer, a number too
// large for an int included, it is 1280 x 720 from "fallback".
DisplayInfo detect_display();

}  // namespace halcyra
