#include "tests/e2e/expected_dashboard.hpp"

#include <deque>

#include "dashboard/draw_dashboard.hpp"
#include "dashboard/font_scale.hpp"
#include "tests/e2e/event_transcript.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

std::string listed(const std::vector<std::string>& messages) {
  std::string text;
  for (const std::string& message : messages) text += "\n    " + message;
  return text;
}

cv::Mat drawn(const ExpectedDashboard& expected, const std::deque<std::string>& events) {
  RuntimeStatus status = expected.status;
  status.events = events;
  g_font_scale = expected.options.font_scale;
  cv::Mat canvas;
  draw_dashboard(canvas, expected.color, expected.infrared, expected.depth, status,
                 expected.options, expected.faces);
  return canvas;
}

}  // namespace

std::string difference(const cv::Mat& picture, const ExpectedDashboard& expected) {
  if (picture.empty()) return "no picture";
  const EventReader reader{expected.options.font_scale, expected.messages, expected.from};
  std::deque<std::string> events;
  for (const std::string& line : reader.lines(picture)) events.push_back(line);
  const std::size_t readable = events.size();
  const std::vector<std::string> shown = messages_of({events.begin(), events.end()});
  for (std::size_t i = 0; i < readable; ++i) {
    if (i >= expected.messages.size() || shown[i] != expected.messages[i]) {
      return "the events are" + listed(shown) + "\n  expected" + listed(expected.messages);
    }
  }
  // The overflow notice covers the first line that could not be read, so every time is tried for
  // it. The lines below it are not drawn; they only cause the notice.
  for (std::size_t i = readable; i < expected.messages.size(); ++i) {
    events.push_back(event_time(expected.from) + "  " + expected.messages[i]);
  }
  std::string difference;
  for (std::time_t time = expected.from; time <= std::time(nullptr); ++time) {
    if (readable < events.size()) {
      events[readable] = event_time(time) + "  " + expected.messages[readable];
    }
    const cv::Mat canvas = drawn(expected, events);
    const ::testing::AssertionResult same = same_pixels(picture, canvas);
    if (same) return "";
    difference = same.message();
    if (readable == events.size()) break;
  }
  return difference;
}

}  // namespace halcyra
