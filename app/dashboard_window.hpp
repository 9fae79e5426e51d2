// The dashboard's window.
#pragma once

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "probes/display_info.hpp"

namespace halcyra {

// Opens the window at the options' size, or full-screen if they say so. Without a usable display
// the window system ends the process.
void open_window(const Options& options);

// A copy of the options for this turn's drawing. Its width and height, in pixels, are those of the
// live window, unless that is smaller than 800 x 480 or `options` ask for full screen.
Options with_live_size(const Options& options);

// Shows the canvas, which fills the window. Opens the window again if it was closed.
void show_canvas(const cv::Mat& canvas, const Options& options, const DisplayInfo& display);

// Waits up to 30 ms for a key, 1 ms in a smoke run. Returns its code, or -1 without a key.
int wait_for_key(const Options& options);

void close_window();

}  // namespace halcyra
