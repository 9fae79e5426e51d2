#include "dashboard/dashboard_geometry.hpp"

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "tests/dashboard/dashboard_of.hpp"

namespace halcyra {
namespace {

TEST(DashboardGeometry, OfTheSmallestCanvas) {
  const DashboardGeometry g = dashboard_of(800, 480);
  EXPECT_EQ(g.margin, 12);
  EXPECT_EQ(g.gap, 10);
  EXPECT_EQ(g.header_height, 48);
  EXPECT_EQ(g.footer_height, 28);
  EXPECT_EQ(g.events_height, 98);
  EXPECT_EQ(g.bottom, 440);
  EXPECT_EQ(g.events_top, 342);
  EXPECT_EQ(g.main_top, 60);
  EXPECT_EQ(g.main_height, 272);
  EXPECT_EQ(g.side_width, 292);
  EXPECT_EQ(g.preview_width, 474);
  EXPECT_EQ(g.side_x, 496);
  EXPECT_EQ(g.preview, cv::Rect(12, 60, 474, 272));
  EXPECT_EQ(g.image_area, cv::Rect(24, 102, 450, 218));
}

TEST(DashboardGeometry, OfTheDefaultWindowOnAFullHdScreen) {
  const DashboardGeometry g = dashboard_of(1440, 810);
  EXPECT_EQ(g.margin, 21);          // 21.6
  EXPECT_EQ(g.gap, 17);             // 17.28
  EXPECT_EQ(g.header_height, 68);   // 68.85
  EXPECT_EQ(g.footer_height, 42);   // 42.12
  EXPECT_EQ(g.events_height, 166);  // 166.05
  EXPECT_EQ(g.bottom, 747);
  EXPECT_EQ(g.events_top, 581);
  EXPECT_EQ(g.main_top, 89);
  EXPECT_EQ(g.main_height, 475);
  EXPECT_EQ(g.side_width, 446);  // 446.4
  EXPECT_EQ(g.preview_width, 935);
  EXPECT_EQ(g.side_x, 973);
  EXPECT_EQ(g.preview, cv::Rect(21, 89, 935, 475));
  EXPECT_EQ(g.image_area, cv::Rect(33, 138, 911, 414));  // below a strip of 49.875
}

TEST(DashboardGeometry, OfALargeCanvas) {
  const DashboardGeometry g = dashboard_of(1920, 1080);
  EXPECT_EQ(g.margin, 28);
  EXPECT_EQ(g.gap, 23);
  EXPECT_EQ(g.header_height, 76);
  EXPECT_EQ(g.footer_height, 42);
  EXPECT_EQ(g.events_height, 221);
  EXPECT_EQ(g.bottom, 1010);
  EXPECT_EQ(g.events_top, 789);
  EXPECT_EQ(g.main_top, 104);
  EXPECT_EQ(g.main_height, 662);
  EXPECT_EQ(g.side_width, 500);
  EXPECT_EQ(g.preview_width, 1341);
  EXPECT_EQ(g.side_x, 1392);
  EXPECT_EQ(g.preview, cv::Rect(28, 104, 1341, 662));
  EXPECT_EQ(g.image_area, cv::Rect(40, 162, 1317, 592));
}

TEST(DashboardGeometry, OfTheLargestCanvas) {
  const DashboardGeometry g = dashboard_of(7680, 4320);
  EXPECT_EQ(g.margin, 28);
  EXPECT_EQ(g.gap, 24);
  EXPECT_EQ(g.events_height, 885);  // 885.6
  EXPECT_EQ(g.bottom, 4250);
  EXPECT_EQ(g.main_height, 3237);
  EXPECT_EQ(g.preview, cv::Rect(28, 104, 7100, 3237));
}

TEST(DashboardGeometry, RaisesASmallerSize) {
  const DashboardGeometry g = dashboard_of(640, 360);
  EXPECT_EQ(g.width, 800);
  EXPECT_EQ(g.height, 480);
  EXPECT_EQ(g.preview, dashboard_of(800, 480).preview);
  EXPECT_EQ(dashboard_of(0, 0).width, 800);
  EXPECT_EQ(dashboard_of(801, 481).width, 801);
  EXPECT_EQ(dashboard_of(801, 481).height, 481);
}

TEST(DashboardGeometry, ClampsByWidth) {
  EXPECT_EQ(dashboard_of(866, 480).margin, 12);   // 12.99
  EXPECT_EQ(dashboard_of(867, 480).margin, 13);   // 13.005
  EXPECT_EQ(dashboard_of(1866, 480).margin, 27);  // 27.99
  EXPECT_EQ(dashboard_of(3000, 480).margin, 28);
  EXPECT_EQ(dashboard_of(916, 480).gap, 10);   // 10.992
  EXPECT_EQ(dashboard_of(917, 480).gap, 11);   // 11.004
  EXPECT_EQ(dashboard_of(1999, 480).gap, 23);  // 23.988
  EXPECT_EQ(dashboard_of(2100, 480).gap, 24);
  EXPECT_EQ(dashboard_of(945, 480).side_width, 292);   // 292.95
  EXPECT_EQ(dashboard_of(946, 480).side_width, 293);   // 293.26
  EXPECT_EQ(dashboard_of(1612, 480).side_width, 499);  // 499.72
  EXPECT_EQ(dashboard_of(1700, 480).side_width, 500);
}

TEST(DashboardGeometry, ClampsByHeight) {
  EXPECT_EQ(dashboard_of(800, 576).header_height, 48);  // 48.96
  EXPECT_EQ(dashboard_of(800, 577).header_height, 49);  // 49.045
  EXPECT_EQ(dashboard_of(800, 905).header_height, 76);  // 76.925
  EXPECT_EQ(dashboard_of(800, 906).header_height, 76);  // 77.01
  EXPECT_EQ(dashboard_of(800, 557).footer_height, 28);  // 28.964
  EXPECT_EQ(dashboard_of(800, 558).footer_height, 29);  // 29.016
  EXPECT_EQ(dashboard_of(800, 826).footer_height, 42);  // 42.952
  EXPECT_EQ(dashboard_of(800, 827).footer_height, 42);  // 43.004
  EXPECT_EQ(dashboard_of(800, 482).events_height, 98);  // 98.81
  EXPECT_EQ(dashboard_of(800, 483).events_height, 99);  // 99.015
}

TEST(DashboardGeometry, ClampsTheStatusStrip) {
  // The strip is the part of the preview above the image area.
  const auto strip_height = [](int width, int height) {
    const DashboardGeometry g = dashboard_of(width, height);
    return g.image_area.y - g.preview.y;
  };
  EXPECT_EQ(strip_height(1440, 690), 42);   // 0.105 x 397 = 41.685
  EXPECT_EQ(strip_height(1440, 709), 42);   // 0.105 x 409 = 42.945
  EXPECT_EQ(strip_height(1440, 710), 43);   // 0.105 x 410 = 43.05
  EXPECT_EQ(strip_height(1440, 916), 57);   // 0.105 x 552 = 57.96
  EXPECT_EQ(strip_height(1440, 1080), 58);  // 0.105 x 682 = 71.61
}

TEST(DashboardGeometry, SuggestsTheEventsHeight) {
  EXPECT_EQ(suggested_events_height(480), 98);   // 98.4
  EXPECT_EQ(suggested_events_height(400), 82);   // no minimum yet
  EXPECT_EQ(suggested_events_height(658), 134);  // 134.89
  EXPECT_EQ(suggested_events_height(659), 135);  // 135.095
}

bool lies_within(const cv::Rect& inner, const cv::Rect& outer) {
  return !inner.empty() && (inner & outer) == inner;
}

::testing::AssertionResult fits(const DashboardGeometry& g) {
  const cv::Rect canvas(0, 0, g.width, g.height);
  const cv::Rect side(g.side_x, g.main_top, g.side_width, g.main_height);
  const cv::Rect cards(g.margin, g.events_top, g.preview_width, g.events_height);
  const cv::Rect events(g.side_x, g.events_top, g.side_width, g.events_height);
  const bool on_canvas = lies_within(g.preview, canvas) && lies_within(g.image_area, g.preview) &&
                         lies_within(side, canvas) && lies_within(cards, canvas) &&
                         lies_within(events, canvas);
  const bool apart = (g.preview & side).empty() && (g.preview & cards).empty() &&
                     (cards & events).empty() && (side & events).empty() &&
                     g.preview.y >= g.header_height && g.bottom <= g.height - g.footer_height;
  if (on_canvas && apart) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << canvas.size() << " on the canvas: " << on_canvas << ", apart: " << apart;
}

TEST(DashboardGeometry, FitsEveryCanvasWithoutOverlap) {
  for (int width = 800; width <= 7680; width += 43) {
    for (int height = 480; height <= 4320; height += 16) {
      ASSERT_TRUE(fits(dashboard_of(width, height)));
    }
  }
}

}  // namespace
}  // namespace halcyra
