// A window that nobody sees. Preloaded into the program, it replaces OpenCV's window functions: it
// writes every call to the file "calls" of the folder that RECORDED_WINDOW names, and answers with
// what the test has put into that folder:
//   keys               the key codes that waitKey returns, one per turn; afterwards no key
//   sizes              width and height of the window for each turn; the last size stays
//   opening_seconds    how long, by the program's clock, opening the window takes
//   await_thread_end   when it exists, closing waits until a thread of the program has ended
#include <time.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <thread>

#include <opencv2/core.hpp>
#include <opencv2/highgui.hpp>

namespace {

using Clock = std::chrono::steady_clock;

std::chrono::seconds g_clock_offset{0};
std::ptrdiff_t g_threads_while_shown = 0;

std::filesystem::path script(const std::string& name) {
  return std::filesystem::path(std::getenv("RECORDED_WINDOW")) / name;
}

void record(const std::ostringstream& call) {
  std::ofstream(script("calls"), std::ios::app) << call.str() << "\n";
}

std::ptrdiff_t running_threads() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
}

// A thread that was joined is listed for a moment longer, so this looks more than once.
bool fewer_threads_than_while_shown() {
  constexpr int kLooks = 1000;
  for (int look = 0; look < kLooks; ++look) {
    if (running_threads() < g_threads_while_shown) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

// The commands that the program runs need no window.
__attribute__((constructor)) void stay_out_of_children() { unsetenv("LD_PRELOAD"); }

}  // namespace

// The program's clock runs on by the time that opening the window is said to take.
Clock::time_point Clock::now() noexcept {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return time_point(std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec) +
                    g_clock_offset);
}

namespace cv {

void namedWindow(const String& winname, int flags) {
  record(std::ostringstream() << "namedWindow " << winname << " " << flags);
}

void resizeWindow(const String& winname, int width, int height) {
  record(std::ostringstream() << "resizeWindow " << winname << " " << width << "x" << height);
}

void setWindowProperty(const String& winname, int prop_id, double prop_value) {
  record(std::ostringstream() << "setWindowProperty " << winname << " " << prop_id << " "
                              << prop_value);
  int seconds = 0;
  std::ifstream(script("opening_seconds")) >> seconds;
  g_clock_offset += std::chrono::seconds(seconds);
}

Rect getWindowImageRect(const String& winname) {
  static std::ifstream sizes(script("sizes"));
  static Size size;
  Size next;
  if (sizes >> next.width >> next.height) size = next;
  record(std::ostringstream() << "getWindowImageRect " << winname);
  return {Point(), size};
}

void imshow(const String& winname, InputArray mat) {
  g_threads_while_shown = running_threads();
  record(std::ostringstream() << "imshow " << winname << " " << mat.cols() << "x" << mat.rows());
}

int waitKey(int delay) {
  static std::ifstream keys(script("keys"));
  record(std::ostringstream() << "waitKey " << delay);
  int key = -1;
  return keys >> key ? key : -1;
}

// Also writes a line to standard output, whose place among the program's own lines can be seen.
void destroyAllWindows() {
  std::ostringstream call;
  call << "destroyAllWindows";
  if (std::filesystem::exists(script("await_thread_end"))) {
    call << (fewer_threads_than_while_shown() ? " after a thread ended" : " with all threads");
  }
  record(call);
  std::cout << "all windows destroyed\n";
}

}  // namespace cv
