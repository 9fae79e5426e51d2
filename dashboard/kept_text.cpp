#include "dashboard/kept_text.hpp"

#include <cstddef>
#include <cstring>
#include <unordered_map>

#include <opencv2/core/utility.hpp>
#include <opencv2/imgproc.hpp>

namespace halcyra {
namespace {

constexpr int kFont = cv::FONT_HERSHEY_SIMPLEX;
constexpr std::size_t kMostBytes = 8 << 20;

// OpenCV cuts a line where it leaves the canvas, which may change the rest of it. A line may end a
// little beyond the pixels that it changes, so a text this close to an edge is not copied.
constexpr int kLeastFromEdge = 4;

// All pixels that a text can change, drawn on a ground of one colour. They are the same wherever it
// is drawn, since OpenCV computes lines of one pixel's thickness with whole numbers only.
struct KeptText {
  bool is_drawn = false;  // from the second time on
  cv::Mat pixels;         // empty also for a text of blanks
  cv::Point offset;       // of the pixels from the text's origin
};

template <class Value>
void append_bytes(std::string& key, const Value& value) {
  char bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  key.append(bytes, sizeof bytes);
}

// Everything that the pixels of a text depend on.
std::string key_of(const std::string& text, double scale, const cv::Scalar& color,
                   const cv::Vec3b& ground) {
  std::string key;
  key.reserve(text.size() + sizeof scale + sizeof color + sizeof ground);
  append_bytes(key, scale);
  append_bytes(key, color);
  append_bytes(key, ground);
  return key += text;
}

void putThinText(cv::Mat& canvas, const std::string& text, cv::Point origin, double scale,
                 const cv::Scalar& color) {
  cv::putText(canvas, text, origin, kFont, scale, color, 1, cv::LINE_AA);
}

// The box of the pixels that the text changes on a picture of `size` and one value in all channels.
cv::Rect changed_box(cv::Size size, int value, const std::string& text, cv::Point origin,
                     double scale, const cv::Scalar& color) {
  const cv::Scalar ground = cv::Scalar::all(value);
  cv::Mat picture(size, CV_8UC3, ground);
  putThinText(picture, text, origin, scale, color);
  cv::Mat unchanged;
  cv::inRange(picture, ground, ground, unchanged);
  return cv::boundingRect(unchanged == 0);
}

// A faint pixel at the edge of a line may change only a ground far enough from the text's colour.
// No ground is farther than black or white.
cv::Rect touched_box(cv::Size size, const std::string& text, cv::Point origin, double scale,
                     const cv::Scalar& color) {
  return changed_box(size, 0, text, origin, scale, color) |
         changed_box(size, 255, text, origin, scale, color);
}

KeptText drawn(const std::string& text, double scale, const cv::Scalar& color,
               const cv::Vec3b& ground) {
  int below = 0;
  const cv::Size size = cv::getTextSize(text, kFont, scale, 1, &below);
  const int margin = size.height + below + kLeastFromEdge;
  const cv::Point origin(margin, margin + size.height);
  cv::Mat picture(origin.y + below + margin, size.width + 2 * margin, CV_8UC3, ground);
  putThinText(picture, text, origin, scale, color);
  const cv::Rect touched = touched_box(picture.size(), text, origin, scale, color);
  return {true, picture(touched).clone(), touched.tl() - origin};
}

bool has_single_color(const cv::Mat& part, const cv::Vec3b& color) {
  const std::size_t bytes = part.elemSize() * static_cast<std::size_t>(part.cols);
  for (int y = 0; y < part.rows; ++y) {
    const unsigned char* const row = part.ptr(y);
    const bool starts_so = std::memcmp(row, color.val, sizeof color.val) == 0;
    // Every pixel is like the one before it.
    const bool goes_on = std::memcmp(row, row + sizeof color.val, bytes - sizeof color.val) == 0;
    if (!starts_so || !goes_on) return false;
  }
  return true;
}

// The texts of one thread. Forgets all of them when they take up too much memory.
class KeptTexts {
 public:
  // False: nothing was drawn, as the text is new, close to an edge or on more than one colour.
  bool copyTo(cv::Mat& canvas, const std::string& text, cv::Point origin, double scale,
              const cv::Scalar& color) {
    const cv::Rect whole(cv::Point(), canvas.size());
    if (!whole.contains(origin)) return false;
    const auto ground = canvas.at<cv::Vec3b>(origin);
    const KeptText* const kept = find(text, scale, color, ground);
    if (kept == nullptr || kept->pixels.empty()) return false;
    const cv::Rect place(origin + kept->offset, kept->pixels.size());
    const cv::Rect around(place.tl() - cv::Point(kLeastFromEdge, kLeastFromEdge),
                          place.size() + cv::Size(2 * kLeastFromEdge, 2 * kLeastFromEdge));
    if ((around & whole) != around || !has_single_color(canvas(place), ground)) return false;
    kept->pixels.copyTo(canvas(place));
    return true;
  }

 private:
  // Null for a text that was not drawn before: many never are again.
  const KeptText* find(const std::string& text, double scale, const cv::Scalar& color,
                       const cv::Vec3b& ground) {
    if (bytes_ > kMostBytes) {
      texts_.clear();
      bytes_ = 0;
    }
    const auto [found, is_new] = texts_.try_emplace(key_of(text, scale, color, ground));
    KeptText& kept = found->second;
    if (is_new) {
      bytes_ += sizeof(*found) + found->first.size();
      return nullptr;
    }
    if (!kept.is_drawn) {
      kept = drawn(text, scale, color, ground);
      bytes_ += kept.pixels.total() * kept.pixels.elemSize();
    }
    return &kept;
  }

  std::unordered_map<std::string, KeptText> texts_;
  std::size_t bytes_ = 0;
};

}  // namespace

void drawThinText(cv::Mat& canvas, const std::string& text, cv::Point origin, double scale,
                  const cv::Scalar& color) {
  thread_local KeptTexts texts;
  if (cv::useOptimized() && texts.copyTo(canvas, text, origin, scale, color)) return;
  putThinText(canvas, text, origin, scale, color);
}

}  // namespace halcyra
