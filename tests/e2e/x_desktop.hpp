// What a person at the desk can do and see: keys, the mouse-driven window changes, the picture.
#pragma once

#include <memory>
#include <string>

#include <opencv2/core/mat.hpp>

struct _XDisplay;

namespace halcyra {

class XDesktop {
 public:
  // `title` is that of the window to look for.
  explicit XDesktop(const std::string& display, std::string title = "Halcyra Control Center");

  // Waits until the window is on the screen and gives it the keyboard.
  // False: it did not come.
  bool find_window();
  bool window_shown();

  // Turns to the window as it is now, without waiting and wherever the keyboard is; a window that
  // was closed may have come back as another. False: there is none.
  bool follow_window();

  // Whether a window manager is at work.
  bool windows_are_managed();

  cv::Size window_size();

  // Presses and releases the key that carries this X keysym name ("a", "A", "Tab", "F5",
  // "KP_Left"), with Shift held where its symbol needs it.
  void press(const std::string& keysym_name);

  // Presses a key without releasing it, and releases it; the server repeats it meanwhile.
  void hold(const std::string& keysym_name);
  void let_go(const std::string& keysym_name);

  // The window's picture, 8-bit BGR; empty while it is not on the screen.
  cv::Mat screenshot();

  void resize(cv::Size size);
  void move(cv::Point place);

  // What a window manager is asked for by its buttons and keys.
  void set_fullscreen(bool wanted);
  void minimise();
  void bring_back();

  // What a window manager sends when its close button is clicked.
  void ask_to_close();

  // How often the window has left the screen since it was found.
  int times_hidden();

 private:
  void send_key(const std::string& keysym_name, bool down);
  void ask_manager(const char* request, long first, long second);

  std::string title_;
  std::shared_ptr<_XDisplay> display_;
  unsigned long window_ = 0;
  int times_hidden_ = 0;
};

}  // namespace halcyra
