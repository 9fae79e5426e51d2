// The size of the dashboard's window and of its text, derived from the screen.
#pragma once

#include "app/run_state/options.hpp"
#include "probes/display_info.hpp"

namespace halcyra {

// Sets `width`, `height` and `font_scale` of the options. Afterwards the window is 800 x 480 to
// 7680 x 4320 pixels, and unless full-screen no larger than the screen (at least 800 x 480). A font
// scale above 0 stays as it is.
void fit_to_screen(Options& options, const DisplayInfo& display);

}  // namespace halcyra
