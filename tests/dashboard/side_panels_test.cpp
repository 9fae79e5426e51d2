#include "dashboard/side_panels.hpp"

#include <gtest/gtest.h>

#include "dashboard/panel_drawing.hpp"
#include "tests/dashboard/dashboard_of.hpp"
#include "tests/dashboard/expected_drawing.hpp"
#include "tests/dashboard/test_scene.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

const cv::Scalar kTextColor(176, 187, 202);

using Rows = std::vector<std::pair<std::string, std::string>>;

// A panel, to be drawn with the panel primitives, which have their own tests.
struct ExpectedPanel {
  cv::Rect rect;
  std::string title;
  double title_scale;
  int column;
  Rows rows;
  std::vector<std::string> reason;
  bool cut = false;  // the reason has more lines
};

void draw(cv::Mat& canvas, const ExpectedPanel& panel) {
  PanelCursor cursor = drawPanel(canvas, panel.rect, panel.title, panel.title_scale);
  for (const auto& [key, value] : panel.rows) {
    drawKeyValue(canvas, cursor, key, value, panel.column);
  }
  for (const std::string& line : panel.reason) {
    drawTextLine(canvas, cursor, line, 0.3, kTextColor, 1);
  }
  if (panel.cut) cursor.overflow = true;
  drawOverflowNotice(canvas, cursor);
}

class SidePanels : public ::testing::Test {
 protected:
  SidePanels() {
    RoomAwareness& room = scene_.status.room;
    room.people = 3;
    room.faces = 4;
    room.skeletons = 5;
    room.unknown_people = 6;
    room.target = "all visible people";
    room.view_mode = "room_overview";
    room.fallback = "face";
    room.reason = "multiple people visible; keeping wide overview";
    room.voice_match = "unmatched voice left";
    scene_.status.voice.live_processing = "running";
    scene_.options.view = "combo";
  }

  cv::Mat drawn(int width, int height) const {
    cv::Mat canvas = expected::canvas(width, height);
    drawSidePanels(canvas, dashboard_of(width, height), scene_.shown());
    return canvas;
  }

  // Both panels of a canvas of 1440 x 810.
  ExpectedPanel room_ = {{973, 89, 446, 326},
                         "ROOM AWARENESS",
                         0.4,
                         1212,  // 0.54 of a width of 424 from 984
                         {{"people", "3"},
                          {"faces", "4"},
                          {"skeletons", "5"},
                          {"Dorran", "no"},
                          {"unknown", "6"},
                          {"target", "all visible people"},
                          {"current view", "COMBO"},
                          {"view mode", "room_overview"},
                          {"fallback", "face"}},
                         {"reason: multiple people visible; keeping wide overview"}};
  ExpectedPanel sensor_ = {{973, 432, 446, 132},
                           "SENSOR STATUS",
                           0.38,
                           1161,  // 0.42 of a width of 430 from 981
                           {{"Skeleton", "degraded"},
                            {"Depth", "status-only"},
                            {"IR", "status-only"},
                            {"Voice", "running"},
                            {"Match", "unmatched voice left"}},
                           {}};

  cv::Mat expected(int width, int height) const {
    cv::Mat canvas = expected::canvas(width, height);
    draw(canvas, room_);
    draw(canvas, sensor_);
    return canvas;
  }

  const FontScaleSetting setting_{0.9};  // at which all rows fit
  TestScene scene_;
};

TEST_F(SidePanels, ShowRoomAndSensor) {
  EXPECT_TRUE(same_pixels(drawn(1440, 810), expected(1440, 810)));
}

TEST_F(SidePanels, ShowGoodStates) {
  scene_.status.room.owner_visible = true;
  scene_.status.skeleton_available = true;
  scene_.status.depth_ok = true;
  scene_.status.ir_ok = true;
  scene_.options.view = "room_overview";
  room_.rows[3].second = "yes";
  room_.rows[6].second = "ROOM OVERVIEW";
  for (int i : {0, 1, 2}) sensor_.rows[static_cast<std::size_t>(i)].second = "OK";
  EXPECT_TRUE(same_pixels(drawn(1440, 810), expected(1440, 810)));
}

TEST_F(SidePanels, ShowDepthAndInfraredSeparately) {
  scene_.status.depth_ok = true;
  sensor_.rows[1].second = "OK";
  EXPECT_TRUE(same_pixels(drawn(1440, 810), expected(1440, 810)));
  scene_.status.depth_ok = false;
  scene_.status.ir_ok = true;
  sensor_.rows[1].second = "status-only";
  sensor_.rows[2].second = "OK";
  EXPECT_TRUE(same_pixels(drawn(1440, 810), expected(1440, 810)));
}

TEST_F(SidePanels, WrapTheReasonToTwoLines) {
  // 424 pixels hold 70 characters of at least 6.
  scene_.status.room.reason = "tracking uncertain; holding room_overview before switching 123";
  room_.reason = {"reason: tracking uncertain; holding room_overview before switching 123"};
  EXPECT_TRUE(same_pixels(drawn(1440, 810), expected(1440, 810)));

  scene_.status.room.reason = "tracking uncertain; holding room_overview before switching 1234";
  room_.reason = {"reason: tracking uncertain; holding room_overview before switching", "1234"};
  EXPECT_TRUE(same_pixels(drawn(1440, 810), expected(1440, 810)));
}

TEST_F(SidePanels, SayWhenTheReasonIsLonger) {
  const std::string line(66, 'x');
  scene_.status.room.reason = line + " " + line;
  room_.reason = {"reason:", line};
  room_.cut = true;
  EXPECT_TRUE(same_pixels(drawn(1440, 810), expected(1440, 810)));
}

TEST_F(SidePanels, WrapTheReasonByTheFontScale) {
  const FontScaleSetting setting(2.4);  // 7.56 pixels for each character, 56 of them
  scene_.status.room.reason = "multiple people visible; keeping a wide overview";
  room_.reason = {"reason: multiple people visible; keeping a wide overview"};
  EXPECT_TRUE(same_pixels(drawn(1440, 810), expected(1440, 810)));
  scene_.status.room.reason += "!";
  room_.reason = {"reason: multiple people visible; keeping a wide", "overview!"};
  EXPECT_TRUE(same_pixels(drawn(1440, 810), expected(1440, 810)));
}

TEST_F(SidePanels, RefuseRowsOnALowCanvas) {
  // 0.3 of a height of 272 is raised to 104; the columns are 0.54 and 0.42 of 276 right of 504.
  room_.rect = {496, 60, 292, 158};
  room_.column = 653;
  sensor_.rect = {496, 228, 292, 104};
  sensor_.column = 619;
  EXPECT_TRUE(same_pixels(drawn(800, 480), expected(800, 480)));
}

TEST_F(SidePanels, DivideTheColumnByItsHeight) {
  DashboardGeometry geometry = dashboard_of(800, 480);
  struct Case {
    int main_height;
    int room_height;
    int sensor_height;
  };
  for (const Case& given :
       {Case{349, 235, 104}, Case{350, 235, 105}, Case{439, 298, 131}, Case{440, 298, 132},
        Case{600, 458, 132}, Case{204, 90, 104}, Case{190, 90, 104}}) {
    geometry.main_height = given.main_height;
    room_.rect = {496, 60, 292, given.room_height};
    sensor_.rect = {496, 70 + given.room_height, 292, given.sensor_height};
    cv::Mat actual = expected::canvas(800, 700);
    drawSidePanels(actual, geometry, scene_.shown());
    cv::Mat frames = expected::canvas(800, 700);
    drawPanel(frames, room_.rect, "ROOM AWARENESS", 0.4);
    drawPanel(frames, sensor_.rect, "SENSOR STATUS", 0.38);
    const cv::Rect left_edge(490, 60, 10, 640);
    EXPECT_TRUE(same_pixels(actual(left_edge), frames(left_edge))) << given.main_height;
  }
}

TEST_F(SidePanels, KeepAMinimumWidthForTheKeys) {
  DashboardGeometry geometry = dashboard_of(1440, 810);
  geometry.side_width = 196;  // 180 for the text, which is 30 characters
  room_.rect = {973, 89, 196, 326};
  room_.column = 981 + 116;
  sensor_.rect = {973, 432, 196, 132};
  sensor_.column = 981 + 86;
  room_.reason = {"reason: multiple people", "visible; keeping wide overview"};
  cv::Mat actual = expected::canvas(1440, 810);
  drawSidePanels(actual, geometry, scene_.shown());
  EXPECT_TRUE(same_pixels(actual, expected(1440, 810)));
}

std::deque<std::string> eleven_events() {
  std::deque<std::string> events;
  for (int i = 0; i < 11; ++i) {
    events.push_back("12:00:" + std::to_string(59 - i) + "  Current view: ROOM OVERVIEW");
  }
  return events;
}

cv::Mat drawn_events(int width, int height, const std::deque<std::string>& events) {
  cv::Mat canvas = expected::canvas(width, height);
  drawEventPanel(canvas, dashboard_of(width, height), events);
  return canvas;
}

// The panel with the first `count` events, and with the notice when there are more.
cv::Mat expected_events(cv::Size canvas_size, const cv::Rect& panel, double scale,
                        const std::deque<std::string>& events, std::size_t count) {
  cv::Mat canvas = expected::canvas(canvas_size.width, canvas_size.height);
  PanelCursor cursor = drawPanel(canvas, panel, "RECENT EVENTS", 0.38);
  for (std::size_t i = 0; i < count; ++i) {
    expected::text(canvas, events[i],
                   {cursor.content.x, cursor.y + static_cast<int>(i) * cursor.line_height}, scale,
                   kTextColor);
  }
  cursor.overflow = count < events.size();
  drawOverflowNotice(canvas, cursor);
  return canvas;
}

TEST(EventPanel, WritesTheEventsInTheirOrder) {
  const FontScaleSetting setting(1.1);
  const std::deque<std::string> events = {"12:00:02  newest", "12:00:01  older",
                                          "12:00:00  oldest"};
  EXPECT_TRUE(same_pixels(drawn_events(1440, 810, events),
                          expected_events({1440, 810}, {973, 581, 446, 166}, 0.33, events, 3)));
}

TEST(EventPanel, EndsBeforeTheFirstEventThatDoesNotFit) {
  const FontScaleSetting setting(1.1);
  // 128 pixels for lines of 20.
  EXPECT_TRUE(
      same_pixels(drawn_events(1440, 810, eleven_events()),
                  expected_events({1440, 810}, {973, 581, 446, 166}, 0.33, eleven_events(), 6)));
}

TEST(EventPanel, SaysThatThereAreMoreOnTheSmallestCanvas) {
  const FontScaleSetting setting(0.9);
  // 60 pixels for lines of 16.
  EXPECT_TRUE(
      same_pixels(drawn_events(800, 480, eleven_events()),
                  expected_events({800, 480}, {496, 342, 292, 98}, 0.29, eleven_events(), 3)));
}

TEST(EventPanel, WritesSmallerOnALowCanvas) {
  const FontScaleSetting setting(1.0);
  const std::deque<std::string> events = {"12:00:02  newest"};
  EXPECT_TRUE(same_pixels(drawn_events(800, 658, events),
                          expected_events({800, 658}, {496, 478, 292, 134}, 0.29, events, 1)));
  EXPECT_TRUE(same_pixels(drawn_events(800, 659, events),
                          expected_events({800, 659}, {496, 478, 292, 135}, 0.33, events, 1)));
}

TEST(EventPanel, CutsALongEvent) {
  const FontScaleSetting setting(1.0);
  const std::string text = "12:00:02  Layout test image written: captures/a-name-as-long-as-this";
  const std::deque<std::string> events = {text};
  // 276 pixels hold 46 characters of at least 6.
  const std::deque<std::string> cut = {text.substr(0, 43) + "..."};
  EXPECT_TRUE(same_pixels(drawn_events(800, 658, events),
                          expected_events({800, 658}, {496, 478, 292, 134}, 0.29, cut, 1)));
}

TEST(EventPanel, MayBeEmpty) {
  const FontScaleSetting setting(1.0);
  EXPECT_TRUE(same_pixels(drawn_events(800, 480, {}),
                          expected_events({800, 480}, {496, 342, 292, 98}, 0.29, {}, 0)));
}

}  // namespace
}  // namespace halcyra
