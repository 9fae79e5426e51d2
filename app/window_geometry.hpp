// The size of the dashboard's window and of its text, derived from the screen.
#pragma once

#include "app/run_state/options.hpp"
#include "probes/display_info.hpp"

namespace halcyra {

// Completes `width`, `height` and `font_scale` of the options; afterwards the window is 800 x 480
// to 7680 x 4320 pixels and the scale positive. A font scale that was given stays.
void fit_to_screen(Options& options, const DisplayInfo& display);

}  // namespace halcyra
