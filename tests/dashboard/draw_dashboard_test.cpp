#include "dashboard/draw_dashboard.hpp"

#include <array>

#include <gtest/gtest.h>

#include "dashboard/card_grid.hpp"
#include "dashboard/event_panel.hpp"
#include "dashboard/footer.hpp"
#include "dashboard/header.hpp"
#include "dashboard/preview.hpp"
#include "dashboard/side_panels.hpp"
#include "dashboard/status_cards.hpp"
#include "tests/dashboard/dashboard_of.hpp"
#include "tests/dashboard/expected_drawing.hpp"
#include "tests/dashboard/test_scene.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

constexpr std::array<const char*, 7> kViews = {
    "rgb", "ir", "depth", "skeletal", "combo", "room_overview", "follow"};

TestScene lively_scene(int width, int height) {
  TestScene scene;
  scene.color = expected::picture(320, 180);
  scene.infrared = expected::picture(64, 53);
  scene.depth = expected::picture(53, 64).t();
  scene.options.width = width;
  scene.options.height = height;
  scene.faces = {test_face(1, {100, 60, 40, 40}, {80, 160, 245}),
                 test_face(2, {200, 60, 40, 40}, {195, 110, 230})};
  scene.status.events = {"12:00:01  Dorran visible", "12:00:00  Control Center launched"};
  scene.status.room.people = 2;
  scene.status.room.voice_match = "voice direction matched Person 2";
  scene.status.voice.direction_angle = "30";
  scene.status.voice.direction_confidence = "0.9";
  return scene;
}

cv::Mat drawn(const TestScene& scene) {
  cv::Mat canvas;
  draw_dashboard(canvas, scene.color, scene.infrared, scene.depth, scene.status, scene.options,
                 scene.faces);
  return canvas;
}

// All parts, which have tests of their own, on the dashboard's ground.
cv::Mat assembled(const TestScene& scene) {
  const DashboardGeometry geometry = dashboard_geometry(scene.options);
  cv::Mat canvas(geometry.height, geometry.width, CV_8UC3, cv::Scalar(14, 18, 25));
  drawHeader(canvas, geometry);
  drawPreview(canvas, geometry, scene.shown());
  drawSidePanels(canvas, geometry, scene.shown());
  drawCardGrid(canvas, geometry, status_cards(scene.status));
  drawEventPanel(canvas, geometry, scene.status.events);
  drawFooter(canvas, geometry);
  return canvas;
}

TEST(DrawDashboard, PutsAllPartsOnOneCanvas) {
  const FontScaleSetting setting(1.1);
  for (const char* view : kViews) {
    TestScene scene = lively_scene(1120, 620);
    scene.options.view = view;
    EXPECT_TRUE(same_pixels(drawn(scene), assembled(scene))) << view;
  }
}

TEST(DrawDashboard, TakesNoViewAsTheCombinedOne) {
  TestScene scene = lively_scene(800, 480);
  scene.options.view = "combo";
  const cv::Mat combined = drawn(scene);
  scene.options.view = "";
  EXPECT_TRUE(same_pixels(drawn(scene), combined));
}

TEST(DrawDashboard, IsNeverSmallerThanItsLayoutNeeds) {
  EXPECT_EQ(drawn(lively_scene(640, 360)).size(), cv::Size(800, 480));
  EXPECT_EQ(drawn(lively_scene(0, 0)).size(), cv::Size(800, 480));
  EXPECT_EQ(drawn(lively_scene(640, 600)).size(), cv::Size(800, 600));
  EXPECT_EQ(drawn(lively_scene(1000, 360)).size(), cv::Size(1000, 480));
  EXPECT_EQ(drawn(lively_scene(801, 481)).size(), cv::Size(801, 481));
  EXPECT_EQ(drawn(lively_scene(640, 360)).type(), CV_8UC3);
}

TEST(DrawDashboard, HasItsGroundColourBetweenTheParts) {
  const cv::Mat canvas = drawn(lively_scene(1440, 810));
  const cv::Mat ground(300, 12, CV_8UC3, cv::Scalar(14, 18, 25));
  EXPECT_TRUE(same_pixels(canvas(cv::Rect(4, 100, 12, 300)), ground));
  EXPECT_TRUE(same_pixels(canvas(cv::Rect(959, 100, 12, 300)), ground));
}

TEST(DrawDashboard, ReplacesTheCanvas) {
  const TestScene scene = lively_scene(800, 480);
  const cv::Mat before = expected::canvas(800, 480);
  cv::Mat canvas = before;
  draw_dashboard(canvas, scene.color, scene.infrared, scene.depth, scene.status, scene.options,
                 scene.faces);
  EXPECT_TRUE(same_pixels(before, expected::canvas(800, 480)));
  EXPECT_TRUE(same_pixels(canvas, drawn(scene)));
}

TEST(DrawDashboard, PaintsOverACanvasThatNobodyElseHolds) {
  const TestScene scene = lively_scene(800, 480);
  cv::Mat canvas(480, 800, CV_8UC3, cv::Scalar::all(255));
  const unsigned char* pixels = canvas.data;
  draw_dashboard(canvas, scene.color, scene.infrared, scene.depth, scene.status, scene.options,
                 scene.faces);
  EXPECT_EQ(canvas.data, pixels);
  EXPECT_TRUE(same_pixels(canvas, drawn(scene)));
}

TEST(DrawDashboard, KeepsNothingFromOnePictureToTheNext) {
  const TestScene scene = lively_scene(1120, 620);
  const cv::Mat first = drawn(scene);
  TestScene other = lively_scene(800, 480);
  other.options.view = "follow";
  other.options.debug = true;
  other.faces.resize(1);
  drawn(other);
  EXPECT_TRUE(same_pixels(drawn(scene), first));
}

TEST(DrawDashboard, LeavesItsInputsAsTheyAre) {
  const TestScene scene = lively_scene(800, 480);
  const cv::Mat color = scene.color.clone();
  const cv::Mat infrared = scene.infrared.clone();
  const cv::Mat depth = scene.depth.clone();
  const double font_scale = g_font_scale;
  for (const char* view : kViews) {
    TestScene shown = scene;
    shown.options.view = view;
    drawn(shown);
    EXPECT_TRUE(same_pixels(scene.color, color)) << view;
    EXPECT_TRUE(same_pixels(scene.infrared, infrared)) << view;
    EXPECT_TRUE(same_pixels(scene.depth, depth)) << view;
  }
  EXPECT_EQ(g_font_scale, font_scale);
}

TEST(DrawDashboard, DrawsWithNothingToShow) {
  TestScene scene;
  scene.options.width = 1440;
  scene.options.height = 810;
  for (const char* view : {"rgb", "ir", "depth", "skeletal", "combo", "room_overview", "follow"}) {
    scene.options.view = view;
    EXPECT_TRUE(same_pixels(drawn(scene), assembled(scene))) << view;
  }
}

}  // namespace
}  // namespace halcyra
