#include "app/dashboard_window.hpp"

#include <cstdlib>
#include <string>

#include <opencv2/core/version.hpp>
#include <opencv2/highgui.hpp>
#include <opencv2/imgproc.hpp>

#include "app/run_state/window_limits.hpp"

namespace halcyra {
namespace {

const std::string kTitle = "Halcyra Control Center";

// OpenCV 4.10 centres a picture in the window, never larger than the picture is, and reports that
// place as the window's; 4.6 stretches it over the whole window. Enlarged twice, the canvas claims
// the whole window even after that has grown. The window shrinks it again by taking every second
// pixel, which gives the canvas back exactly.
constexpr bool kPictureBoundsWindow = CV_VERSION_MAJOR > 4 || CV_VERSION_MINOR > 6;
constexpr int kWindowedEnlargement = 2;

// How many times as large as the canvas the picture has to be to fill the screen.
int fullscreen_enlargement(cv::Size canvas, cv::Size screen) {
  int times = kWindowedEnlargement;
  while (times * canvas.width < screen.width || times * canvas.height < screen.height) ++times;
  return times;
}

}  // namespace

bool display_is_named() {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') return true;
  }
  return false;
}

// Without this variable only the low byte of a key code arrives, so a cursor key is mistaken for
// the letter with the same low byte.
void ask_for_whole_key_codes() { setenv("OPENCV_LEGACY_WAITKEY", "1", 1); }

// No toolbar and no fixed aspect ratio: with either, the live size would differ from the size of
// the canvas.
void open_window(const Options& options) {
  cv::namedWindow(kTitle, cv::WINDOW_NORMAL | cv::WINDOW_FREERATIO | cv::WINDOW_GUI_NORMAL);
  cv::resizeWindow(kTitle, options.width, options.height);
  cv::setWindowProperty(kTitle, cv::WND_PROP_FULLSCREEN, options.fullscreen ? 1.0 : 0.0);
}

Options with_live_size(const Options& options) {
  Options live = options;
  const cv::Rect window = cv::getWindowImageRect(kTitle);
  if (window.width >= kLeastWidth && window.height >= kLeastHeight && !options.fullscreen) {
    live.width = window.width;
    live.height = window.height;
  }
  return live;
}

void show_canvas(const cv::Mat& canvas, const Options& options, const DisplayInfo& display) {
  if (!kPictureBoundsWindow) return cv::imshow(kTitle, canvas);
  const int times = options.fullscreen
                        ? fullscreen_enlargement(canvas.size(), {display.width, display.height})
                        : kWindowedEnlargement;
  cv::Mat enlarged;
  cv::resize(canvas, enlarged, {}, times, times, cv::INTER_NEAREST);
  cv::imshow(kTitle, enlarged);
}

int wait_for_key(const Options& options) { return cv::waitKey(options.smoke ? 1 : 30); }

void close_window() { cv::destroyAllWindows(); }

}  // namespace halcyra
