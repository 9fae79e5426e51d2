// The program's window, which shows one picture.
#pragma once

#include <optional>
#include <string>

#include <opencv2/core/mat.hpp>

namespace halcyra {

// Whether DISPLAY, WAYLAND_DISPLAY or QT_QPA_PLATFORM is set and not empty. Otherwise opening a
// window would end the process by a signal. Does not try the display.
bool display_is_named();

// What to tell a person who has no display.
std::string no_display_message();

// Makes key waits return whole key codes. Must run before the first key wait, and before other
// threads exist, since it writes the environment.
void ask_for_whole_key_codes();

// Opens a resizable window of that size in pixels. Without a usable display the window system ends
// the process.
void open_picture_window(const std::string& title, cv::Size size, bool fullscreen);

// The place that the window offers its picture, in pixels; empty for a closed window. To be asked
// before each picture is shown, since show_picture goes by what it was lately.
cv::Rect picture_place(const std::string& title);

// Shows the picture, which fills the window. `screen` is the size that a full-screen window has to
// fill. Opens the window again if it was closed.
void show_picture(const std::string& title, const cv::Mat& picture,
                  const std::optional<cv::Size>& screen);

}  // namespace halcyra
