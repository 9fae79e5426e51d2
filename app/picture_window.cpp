#include "app/picture_window.hpp"

#include <algorithm>
#include <cstdlib>

#include <opencv2/core/version.hpp>
#include <opencv2/highgui.hpp>
#include <opencv2/imgproc.hpp>

#include "app/run_state/window_limits.hpp"

namespace halcyra {
namespace {

// OpenCV 4.10 centres a picture in the window, never larger than the picture is, and reports that
// place as the window's; 4.6 stretches it over the whole window. Enlarged twice, the picture claims
// the whole window even after that has grown. The window shrinks it again by taking every second
// pixel, which gives the picture back exactly.
constexpr bool kPictureBoundsWindow = CV_VERSION_MAJOR > 4 || CV_VERSION_MINOR > 6;
constexpr int kWindowedEnlargement = 2;

// Enlarging a picture takes longer than all else that showing it does. So a picture that fits its
// window is enlarged only while the window may be changing, and now and then to see whether it has
// grown: most growth shows at once, as it moves the centred picture, but growth by one pixel or to
// all sides alike does not.
constexpr int kPicturesUntilStill = 10;
constexpr int kPicturesBetweenLooks = 8;

// The last place of the program's one window, and how often in a row it was the same.
struct LastPlace {
  cv::Rect place;
  int times = 0;
};

LastPlace& last_place() {
  static LastPlace last;
  return last;
}

void remember(const cv::Rect& place) {
  LastPlace& last = last_place();
  last.times = place == last.place ? last.times + 1 : 0;
  last.place = place;
}

bool may_have_grown(cv::Size picture) {
  const LastPlace& last = last_place();
  return last.place.size() != picture || last.times < kPicturesUntilStill ||
         last.times % kPicturesBetweenLooks == 0;
}

// How many times as large as the picture it has to be to fill the screen. A tool may report a
// screen that cannot be, for which there would not be enough memory.
int fullscreen_enlargement(cv::Size picture, cv::Size screen) {
  const int width = std::min(screen.width, kMostWidth);
  const int height = std::min(screen.height, kMostHeight);
  int times = kWindowedEnlargement;
  while (times * picture.width < width || times * picture.height < height) ++times;
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

std::string no_display_message() {
  return "No display: none of DISPLAY, WAYLAND_DISPLAY and QT_QPA_PLATFORM is set. "
         "QT_QPA_PLATFORM=offscreen runs without one.";
}

// Without this variable only the low byte of a key code arrives, so a cursor key is mistaken for
// the letter with the same low byte.
void ask_for_whole_key_codes() { setenv("OPENCV_LEGACY_WAITKEY", "1", 1); }

// No toolbar and no fixed aspect ratio: with either, the live size would differ from the size of
// the picture.
void open_picture_window(const std::string& title, cv::Size size, bool fullscreen) {
  cv::namedWindow(title, cv::WINDOW_NORMAL | cv::WINDOW_FREERATIO | cv::WINDOW_GUI_NORMAL);
  cv::resizeWindow(title, size.width, size.height);
  cv::setWindowProperty(title, cv::WND_PROP_FULLSCREEN, fullscreen ? 1.0 : 0.0);
}

cv::Rect picture_place(const std::string& title) {
  const cv::Rect place = cv::getWindowImageRect(title);
  remember(place);
  return place;
}

void show_picture(const std::string& title, const cv::Mat& picture,
                  const std::optional<cv::Size>& screen) {
  if (!kPictureBoundsWindow || !may_have_grown(picture.size())) return cv::imshow(title, picture);
  const int times = screen ? fullscreen_enlargement(picture.size(), *screen) : kWindowedEnlargement;
  cv::Mat enlarged;
  cv::resize(picture, enlarged, {}, times, times, cv::INTER_NEAREST);
  cv::imshow(title, enlarged);
}

}  // namespace halcyra
