#include "dashboard/event_panel.hpp"

#include <gtest/gtest.h>

#include "dashboard/panel_drawing.hpp"
#include "tests/dashboard/dashboard_of.hpp"
#include "tests/dashboard/expected_drawing.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

const cv::Scalar kEventColor(176, 187, 202);

std::deque<std::string> eleven_events() {
  std::deque<std::string> events;
  for (int i = 0; i < 11; ++i) {
    events.push_back("12:00:" + std::to_string(59 - i) + "  Current view: ROOM OVERVIEW");
  }
  return events;
}

cv::Mat drawn(int width, int height, const std::deque<std::string>& events) {
  cv::Mat canvas = expected::canvas(width, height);
  drawEventPanel(canvas, dashboard_of(width, height), events);
  return canvas;
}

// The panel with the first `count` events written, and the notice when there are more.
cv::Mat expected_panel(cv::Size canvas_size, const cv::Rect& panel, double scale,
                       const std::deque<std::string>& events, std::size_t count) {
  cv::Mat canvas = expected::canvas(canvas_size.width, canvas_size.height);
  PanelCursor cursor = drawPanel(canvas, panel, "RECENT EVENTS", 0.38);
  for (std::size_t i = 0; i < count; ++i) {
    expected::text(canvas, events[i],
                   {cursor.content.x, cursor.y + static_cast<int>(i) * cursor.line_height}, scale,
                   kEventColor);
  }
  cursor.overflow = count < events.size();
  drawOverflowNotice(canvas, cursor);
  return canvas;
}

TEST(EventPanel, WritesTheEventsInTheirOrder) {
  const FontScaleSetting setting(1.1);
  const std::deque<std::string> events = {"12:00:02  newest", "12:00:01  older",
                                          "12:00:00  oldest"};
  EXPECT_TRUE(same_pixels(drawn(1440, 810, events),
                          expected_panel({1440, 810}, {973, 581, 446, 166}, 0.33, events, 3)));
}

TEST(EventPanel, EndsWithTheFirstEventThatFindsNoRoom) {
  const FontScaleSetting setting(1.1);
  // 128 pixels for lines of 20.
  EXPECT_TRUE(
      same_pixels(drawn(1440, 810, eleven_events()),
                  expected_panel({1440, 810}, {973, 581, 446, 166}, 0.33, eleven_events(), 6)));
}

TEST(EventPanel, SaysThatThereAreMoreOnTheSmallestCanvas) {
  const FontScaleSetting setting(0.9);
  // 60 pixels for lines of 16.
  EXPECT_TRUE(
      same_pixels(drawn(800, 480, eleven_events()),
                  expected_panel({800, 480}, {496, 342, 292, 98}, 0.29, eleven_events(), 3)));
}

TEST(EventPanel, WritesSmallerOnALowCanvas) {
  const FontScaleSetting setting(1.0);
  const std::deque<std::string> events = {"12:00:02  newest"};
  EXPECT_TRUE(same_pixels(drawn(800, 658, events),
                          expected_panel({800, 658}, {496, 478, 292, 134}, 0.29, events, 1)));
  EXPECT_TRUE(same_pixels(drawn(800, 659, events),
                          expected_panel({800, 659}, {496, 478, 292, 135}, 0.33, events, 1)));
}

TEST(EventPanel, CutsALongEvent) {
  const FontScaleSetting setting(1.0);
  const std::string text = "12:00:02  Layout test image written: captures/a-name-as-long-as-this";
  const std::deque<std::string> events = {text};
  // 276 pixels hold 46 characters of at least 6.
  const std::deque<std::string> cut = {text.substr(0, 43) + "..."};
  EXPECT_TRUE(same_pixels(drawn(800, 658, events),
                          expected_panel({800, 658}, {496, 478, 292, 134}, 0.29, cut, 1)));
}

TEST(EventPanel, MayBeEmpty) {
  const FontScaleSetting setting(1.0);
  EXPECT_TRUE(same_pixels(drawn(800, 480, {}),
                          expected_panel({800, 480}, {496, 342, 292, 98}, 0.29, {}, 0)));
}

}  // namespace
}  // namespace halcyra
