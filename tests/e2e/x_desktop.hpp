// What a person at the desk can do and see: keys, the mouse-driven window changes, the picture.
#pragma once

#include <memory>
#include <string>

#include <opencv2/core/mat.hpp>

struct _XDisplay;

namespace halcyra {

class XDesktop {
 public:
  explicit XDesktop(const std::string& display);

  // Waits until the window "Halcyra Control Center" is on the screen and gives it the keyboard.
  // False: it did not come.
  bool find_window();
  bool window_shown();

  // Whether a window manager is at work.
  bool windows_are_managed();

  cv::Size window_size();

  // Presses and releases the key that carries this X keysym name ("a", "A", "Tab", "F5",
  // "KP_Left"), with Shift held where its symbol needs it.
  void press(const std::string& keysym_name);

  // The window's picture, 8-bit BGR; empty while it is not on the screen.
  cv::Mat screenshot();

  void resize(cv::Size size);

  // What a window manager sends when its close button is clicked.
  void ask_to_close();

  // How often the window has left the screen since it was found.
  int times_hidden();

 private:
  std::shared_ptr<_XDisplay> display_;
  unsigned long window_ = 0;
  int times_hidden_ = 0;
};

}  // namespace halcyra
