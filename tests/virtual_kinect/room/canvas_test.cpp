#include "virtual_kinect/room/canvas.hpp"

#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "virtual_kinect/room/coat.hpp"
#include "virtual_kinect/room/shapes.hpp"

namespace halcyra::virtual_kinect::room {
namespace {

constexpr Pinhole kCamera{80, 60, 50.0F};
const cv::Point kMiddle(40, 30);

// A square of one colour that faces the camera.
Surface square(float depth, const Vec3& color, float infrared, float side = 400.0F) {
  Surface surface =
      make_sheet({-0.5F * side, -0.5F * side, depth}, {side, 0, 0}, {0, side, 0}, 50.0F);
  paint(surface, {32, 32}, even_coat({color, infrared}));
  return surface;
}

class CanvasTest : public testing::Test {
 protected:
  static cv::Mat blank(int type) { return cv::Mat::zeros(kCamera.height, kCamera.width, type); }

  void draw_both(const Surface& surface, const Pose& pose = {}) const {
    draw(color_, surface, pose, LightLevels{}, 0.0F);
    draw(depth_, surface, pose);
  }

  cv::Vec4b color() const { return color_.color.at<cv::Vec4b>(kMiddle); }
  float echo() const { return depth_.echo.at<float>(kMiddle); }

  ColorCanvas color_{kCamera, blank(CV_8UC4), blank(CV_32F)};
  DepthCanvas depth_{kCamera, blank(CV_32F), blank(CV_32F)};
  const Surface near_ = square(1000.0F, {1.0F, 0.0F, 0.0F}, 0.4F);
  const Surface far_ = square(2000.0F, {0.0F, 0.0F, 1.0F}, 0.8F, 2000.0F);
};

TEST_F(CanvasTest, ShowsTheNearerSurfaceWhicheverIsDrawnFirst) {
  for (const bool near_first : {true, false}) {
    color_ = {kCamera, blank(CV_8UC4), blank(CV_32F)};
    depth_ = {kCamera, blank(CV_32F), blank(CV_32F)};
    draw_both(near_first ? near_ : far_);
    draw_both(near_first ? far_ : near_);
    EXPECT_EQ(color()[0], 0);
    EXPECT_GT(color()[2], 50);
    EXPECT_FLOAT_EQ(color_.nearness.at<float>(kMiddle), 0.001F);
    EXPECT_FLOAT_EQ(depth_.nearness.at<float>(kMiddle), 0.001F);
    EXPECT_FLOAT_EQ(depth_.nearness.at<float>(30, 60), 0.0005F);
    EXPECT_GT(color_.color.at<cv::Vec4b>(30, 60)[0], 50);
  }
}

TEST_F(CanvasTest, SendsBackItsShareOfTheSensorsLight) {
  draw_both(near_);
  EXPECT_NEAR(echo(), 0.4F, 0.01F);
  EXPECT_EQ(depth_.echo.at<float>(1, 1), 0.0F);
}

TEST_F(CanvasTest, SendsBackLessWhereItIsTurnedAway) {
  draw_both(near_, shifted({0, 0, 1000}) * turned_about_y(60) * shifted({0, 0, -1000}));
  EXPECT_NEAR(echo(), 0.4F * 0.5F, 0.03F);
}

TEST_F(CanvasTest, LeavesOutWhatIsSeenFromBehind) {
  draw_both(reversed(near_));
  EXPECT_EQ(cv::countNonZero(color_.nearness), 0);
  EXPECT_EQ(cv::countNonZero(depth_.nearness), 0);
}

TEST_F(CanvasTest, LeavesOutWhatIsTooClose) {
  draw_both(near_, shifted({0, 0, -850}));
  EXPECT_EQ(cv::countNonZero(color_.nearness), 0);
  EXPECT_EQ(cv::countNonZero(depth_.nearness), 0);
}

TEST_F(CanvasTest, ShowsDarkerLevelsDarker) {
  draw(color_, near_, Pose{}, {0.3F, 0.0F}, 0.0F);
  const int dark = color()[2];
  color_ = {kCamera, blank(CV_8UC4), blank(CV_32F)};
  draw(color_, near_, Pose{}, {0.6F, 0.0F}, 0.0F);
  EXPECT_NEAR(color()[2], 2 * dark, 2);
}

// In two halves, as the rows of a picture may be drawn separately.
TEST_F(CanvasTest, ShowsUnderTwoLightsWhatItShowsUnderEach) {
  Surface glossy = far_;
  glossy.gloss = 0.5F;
  glossy.daylight_glow = 0.1F;
  glossy.lamp_glow = 0.2F;
  const Pose pose = turned_about_y(5) * turned_about_z(20);
  const ColorCanvas day{kCamera, blank(CV_8UC4), blank(CV_32F)};
  draw(day, glossy, pose, {1.0F, 0.0F}, 0.0F);
  const ColorCanvas lamp{kCamera, blank(CV_8UC4), blank(CV_32F)};
  draw(lamp, glossy, pose, {0.0F, 1.0F}, 0.0F);
  EXPECT_NE(cv::norm(day.color, lamp.color, cv::NORM_INF), 0.0);
  for (const cv::Range& rows : {cv::Range(0, 30), cv::Range(30, 60)}) {
    const TwoLightsCanvas both{kCamera, rows.start, blank(CV_8UC4).rowRange(rows),
                               blank(CV_8UC4).rowRange(rows), blank(CV_32F).rowRange(rows)};
    draw(both, glossy, pose);
    EXPECT_EQ(cv::norm(both.daylight, day.color.rowRange(rows), cv::NORM_INF), 0.0);
    EXPECT_EQ(cv::norm(both.lamp, lamp.color.rowRange(rows), cv::NORM_INF), 0.0);
    EXPECT_EQ(cv::norm(both.nearness, day.nearness.rowRange(rows), cv::NORM_INF), 0.0);
  }
}

TEST_F(CanvasTest, ExtentHoldsEveryPixelOfTheSurface) {
  const Pose pose = shifted({130, -70, 0}) * turned_about_z(20);
  draw(depth_, near_, pose);
  std::vector<cv::Point> pixels;
  cv::findNonZero(depth_.nearness, pixels);
  ASSERT_FALSE(pixels.empty());
  const cv::Rect drawn = cv::boundingRect(pixels);
  const cv::Rect area = extent(kCamera, near_, pose);
  EXPECT_EQ(area & drawn, drawn);
  EXPECT_LE(area.width, drawn.width + 2);
  EXPECT_LE(area.height, drawn.height + 2);
}

TEST_F(CanvasTest, ExtentIsEmptyOutOfView) {
  EXPECT_TRUE(extent(kCamera, near_, shifted({2000, 0, 0})).empty());
  EXPECT_TRUE(extent(kCamera, near_, shifted({0, -2000, 0})).empty());
  EXPECT_TRUE(extent(kCamera, near_, shifted({0, 0, -2000})).empty());
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
