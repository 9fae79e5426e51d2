#include "dashboard/draw_dashboard.hpp"

#include <array>

#include <gtest/gtest.h>

#include "dashboard/card_grid.hpp"
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

// All parts drawn on the background. Each part has its own tests.
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
    EXPECT_TRUE(same_pixels(dashboard_showing(scene), assembled(scene))) << view;
  }
}

TEST(DrawDashboard, TreatsAnEmptyViewAsCombo) {
  TestScene scene = lively_scene(800, 480);
  scene.options.view = "combo";
  const cv::Mat combined = dashboard_showing(scene);
  scene.options.view = "";
  EXPECT_TRUE(same_pixels(dashboard_showing(scene), combined));
}

TEST(DrawDashboard, IsAtLeast800By480) {
  EXPECT_EQ(dashboard_showing(lively_scene(640, 360)).size(), cv::Size(800, 480));
  EXPECT_EQ(dashboard_showing(lively_scene(0, 0)).size(), cv::Size(800, 480));
  EXPECT_EQ(dashboard_showing(lively_scene(640, 600)).size(), cv::Size(800, 600));
  EXPECT_EQ(dashboard_showing(lively_scene(1000, 360)).size(), cv::Size(1000, 480));
  EXPECT_EQ(dashboard_showing(lively_scene(801, 481)).size(), cv::Size(801, 481));
  EXPECT_EQ(dashboard_showing(lively_scene(640, 360)).type(), CV_8UC3);
}

TEST(DrawDashboard, ShowsTheBackgroundBetweenTheParts) {
  const cv::Mat canvas = dashboard_showing(lively_scene(1440, 810));
  const cv::Mat background(300, 12, CV_8UC3, cv::Scalar(14, 18, 25));
  EXPECT_TRUE(same_pixels(canvas(cv::Rect(4, 100, 12, 300)), background));
  EXPECT_TRUE(same_pixels(canvas(cv::Rect(959, 100, 12, 300)), background));
}

TEST(DrawDashboard, DoesNotTouchACanvasThatSomebodyElseHolds) {
  const TestScene scene = lively_scene(800, 480);
  const cv::Mat before = expected::canvas(800, 480);
  cv::Mat canvas = before;
  draw_scene(canvas, scene);
  EXPECT_TRUE(same_pixels(before, expected::canvas(800, 480)));
  EXPECT_TRUE(same_pixels(canvas, dashboard_showing(scene)));
}

TEST(DrawDashboard, ReusesTheMemoryOfACanvasThatNobodyElseHolds) {
  const TestScene scene = lively_scene(800, 480);
  cv::Mat canvas(480, 800, CV_8UC3, cv::Scalar::all(255));
  const unsigned char* pixels = canvas.data;
  draw_scene(canvas, scene);
  EXPECT_EQ(canvas.data, pixels);
  EXPECT_TRUE(same_pixels(canvas, dashboard_showing(scene)));
}

TEST(DrawDashboard, KeepsNoStateBetweenPictures) {
  const TestScene scene = lively_scene(1120, 620);
  const cv::Mat first = dashboard_showing(scene);
  TestScene other = lively_scene(800, 480);
  other.options.view = "follow";
  other.options.debug = true;
  other.faces.resize(1);
  dashboard_showing(other);
  EXPECT_TRUE(same_pixels(dashboard_showing(scene), first));
}

// The insets have an edge beside their labels, which are copied from the second time on.
TEST(DrawDashboard, IsTheSameEachTime) {
  const FontScaleSetting setting(0.97778);
  TestScene scene = lively_scene(1280, 720);
  scene.options.view = "combo";
  scene.infrared = cv::Mat(424, 512, CV_8UC3, cv::Scalar::all(0));
  scene.infrared.colRange(0, 101).setTo(cv::Scalar::all(255));
  scene.depth = scene.infrared;
  const cv::Mat first = dashboard_showing(scene);
  for (int time = 0; time < 3; ++time) {
    EXPECT_TRUE(same_pixels(dashboard_showing(scene), first)) << time;
  }
}

TEST(DrawDashboard, DoesNotChangeItsInputs) {
  const TestScene scene = lively_scene(800, 480);
  const cv::Mat color = scene.color.clone();
  const cv::Mat infrared = scene.infrared.clone();
  const cv::Mat depth = scene.depth.clone();
  const double font_scale = g_font_scale;
  for (const char* view : kViews) {
    TestScene shown = scene;
    shown.options.view = view;
    dashboard_showing(shown);
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
  for (const char* view : kViews) {
    scene.options.view = view;
    EXPECT_TRUE(same_pixels(dashboard_showing(scene), assembled(scene))) << view;
  }
}

}  // namespace
}  // namespace halcyra
