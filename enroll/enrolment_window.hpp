// The window of a live enrolment.
#pragma once

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "probes/display_info.hpp"

namespace halcyra {

// Opens the window at the options' size, or full-screen if they say so. Without a usable display
// the window system ends the process.
void open_enrolment_window(const Options& options);

// The size to draw at, in pixels: that of the live window, unless that is smaller than 800 x 480 or
// `options` ask for full screen; then the options' own.
cv::Size enrolment_picture_size(const Options& options);

// Shows the picture, which fills the window. The window must be open.
void show_enrolment(const cv::Mat& picture, const Options& options, const DisplayInfo& display);

// Handles what the person does with the window and waits a few milliseconds for a key. Returns its
// code, or -1 without a key.
int wait_for_enrolment_key();

// False once the window was closed.
bool enrolment_window_is_open();

void close_enrolment_window();

}  // namespace halcyra
