#include "virtual_kinect/room/raster.hpp"

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

namespace halcyra::virtual_kinect::room {
namespace {

constexpr int kSide = 40;

Corner<2> corner(float x, float y) {
  Corner<2> made{x, y, {}};
  made.values[0][0] = 3.0F + 2.0F * x - 0.5F * y;
  made.values[1][3] = y;
  return made;
}

// How often each pixel was filled.
class RasterTest : public testing::Test {
 protected:
  void fill(const Corner<2>& a, const Corner<2>& b, const Corner<2>& c,
            const cv::Rect& bounds = {0, 0, kSide, kSide}) {
    fill_triangle(a, b, c, bounds, [this](int column, int row, const Values<2>& values) {
      ++counts_.at<uchar>(row, column);
      const Corner<2> expected =
          corner(static_cast<float>(column) + 0.5F, static_cast<float>(row) + 0.5F);
      EXPECT_NEAR(values[0][0], expected.values[0][0], 1e-3F);
      EXPECT_NEAR(values[1][3], expected.values[1][3], 1e-3F);
    });
  }

  cv::Mat counts_ = cv::Mat::zeros(kSide, kSide, CV_8U);
};

TEST_F(RasterTest, FillsThePixelsWhoseCentresAreInside) {
  fill(corner(2, 3), corner(10, 3), corner(2, 11));
  for (int row = 0; row < kSide; ++row) {
    for (int column = 0; column < kSide; ++column) {
      // The centres on the slanted edge, where column + row is 12, may go either way.
      if (column + row == 12) continue;
      const bool inside = column >= 2 && row >= 3 && column + row < 12;
      EXPECT_EQ(counts_.at<uchar>(row, column), inside ? 1 : 0) << column << ", " << row;
    }
  }
}

TEST_F(RasterTest, LeavesNoGapBetweenNeighbours) {
  const Corner<2> middle = corner(17.3F, 19.1F);
  const Corner<2> rim[] = {corner(1.2F, 2.7F),   corner(21.6F, 0.4F),  corner(38.1F, 5.5F),
                           corner(36.9F, 31.2F), corner(12.5F, 38.7F), corner(0.6F, 22.5F)};
  for (int i = 0; i < 6; ++i) fill(middle, rim[i], rim[(i + 1) % 6]);
  EXPECT_EQ(cv::countNonZero(counts_(cv::Rect(6, 6, 26, 25))), 26 * 25);
}

TEST_F(RasterTest, LeavesOutTrianglesSeenFromBehind) {
  fill(corner(2, 3), corner(2, 11), corner(10, 3));
  EXPECT_EQ(cv::countNonZero(counts_), 0);
}

TEST_F(RasterTest, StaysWithinTheBounds) {
  const cv::Rect bounds(5, 8, 11, 6);
  fill(corner(-50, -60), corner(200, -60), corner(-50, 200), bounds);
  EXPECT_EQ(cv::countNonZero(counts_), bounds.area());
  EXPECT_EQ(cv::countNonZero(counts_(bounds)), bounds.area());
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
