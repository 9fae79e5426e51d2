// A program with the dashboard's window, white, which leaves the screen before the program ends.
// Usage: brief_window FOLDER
//   The window stays until FOLDER/taken has three lines: one picture is taken before it exists. The
//   program goes on until FOLDER/asked, begun anew then, has three.
#include <X11/Xlib.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;

template <typename Condition>
bool wait_until(Condition condition) {
  for (int i = 0; i < 600; ++i) {
    if (condition()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return false;
}

int lines_in(const fs::path& file) {
  std::ifstream stream(file);
  int lines = 0;
  for (std::string line; std::getline(stream, line);) ++lines;
  return lines;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const fs::path folder = argv[1];
  Display* const display = XOpenDisplay(nullptr);
  if (display == nullptr) return 1;
  const unsigned long white = WhitePixel(display, DefaultScreen(display));
  const Window window =
      XCreateSimpleWindow(display, DefaultRootWindow(display), 40, 30, 320, 240, 0, white, white);
  XStoreName(display, window, "Halcyra Control Center");
  XMapWindow(display, window);
  XSync(display, False);
  bool in_time = wait_until([&] { return lines_in(folder / "taken") >= 3; });
  XUnmapWindow(display, window);
  XSync(display, False);
  fs::remove(folder / "asked");
  in_time = in_time && wait_until([&] { return lines_in(folder / "asked") >= 3; });
  XCloseDisplay(display);
  return in_time ? 0 : 1;
}
