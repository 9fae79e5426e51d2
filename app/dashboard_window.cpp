#include "app/dashboard_window.hpp"

#include <optional>
#include <string>

#include <opencv2/highgui.hpp>

#include "app/picture_window.hpp"
#include "app/run_state/window_limits.hpp"

namespace halcyra {
namespace {

const std::string kTitle = "Halcyra Control Center";

}  // namespace

void open_window(const Options& options) {
  open_picture_window(kTitle, {options.width, options.height}, options.fullscreen);
}

Options with_live_size(const Options& options) {
  Options live = options;
  const cv::Rect window = picture_place(kTitle);
  if (window.width >= kLeastWidth && window.height >= kLeastHeight && !options.fullscreen) {
    live.width = window.width;
    live.height = window.height;
  }
  return live;
}

void show_canvas(const cv::Mat& canvas, const Options& options, const DisplayInfo& display) {
  std::optional<cv::Size> screen;
  if (options.fullscreen) screen = cv::Size(display.width, display.height);
  show_picture(kTitle, canvas, screen);
}

int wait_for_key(const Options& options) { return cv::waitKey(options.smoke ? 1 : 30); }

void close_window() { cv::destroyAllWindows(); }

}  // namespace halcyra
