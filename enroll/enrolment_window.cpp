#include "enroll/enrolment_window.hpp"

#include <optional>
#include <string>

#include <opencv2/highgui.hpp>

#include "app/picture_window.hpp"
#include "app/run_state/window_limits.hpp"

namespace halcyra {
namespace {

const std::string kTitle = "Halcyra Enrolment";

// Long enough for the window system, short beside the search for faces.
constexpr int kKeyWaitMs = 10;

}  // namespace

void open_enrolment_window(const Options& options) {
  open_picture_window(kTitle, {options.width, options.height}, options.fullscreen);
}

cv::Size enrolment_picture_size(const Options& options) {
  const cv::Rect window = picture_place(kTitle);
  if (window.width >= kLeastWidth && window.height >= kLeastHeight && !options.fullscreen) {
    return window.size();
  }
  return {options.width, options.height};
}

void show_enrolment(const cv::Mat& picture, const Options& options, const DisplayInfo& display) {
  std::optional<cv::Size> screen;
  if (options.fullscreen) screen = cv::Size(display.width, display.height);
  show_picture(kTitle, picture, screen);
}

int wait_for_enrolment_key() { return cv::waitKey(kKeyWaitMs); }

bool enrolment_window_is_open() {
  return cv::getWindowProperty(kTitle, cv::WND_PROP_VISIBLE) > 0.0;
}

void close_enrolment_window() { cv::destroyAllWindows(); }

}  // namespace halcyra
