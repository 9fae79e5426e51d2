// The one window of the program: the only place that talks to the window system.
#pragma once

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"

namespace halcyra {

// Whether the environment names a display or another place to draw: DISPLAY, WAYLAND_DISPLAY or
// QT_QPA_PLATFORM. Where none does, opening the window would end the process by a signal.
bool display_is_named();

// Makes waitKey hand on whole key codes. Must run before the first key is waited for, and before
// other threads exist, since it writes the environment.
void ask_for_whole_key_codes();

// Opens the window at the options' size, full-screen when they say so. Without a display the
// window system ends the process.
void open_window(const Options& options);

// The options for this turn's drawing: width and height are the live window's, as long as it is
// at least 800 x 480 and not full-screen.
Options with_live_size(const Options& options);

// Shows the canvas; brings the window back when it was closed.
void show_canvas(const cv::Mat& canvas);

// Waits for one key, 30 ms, or 1 ms in a smoke run; -1 when none was pressed.
int wait_for_key(const Options& options);

void close_window();

}  // namespace halcyra
