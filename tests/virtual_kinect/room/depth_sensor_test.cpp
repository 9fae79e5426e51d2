#include "virtual_kinect/room/depth_sensor.hpp"

#include <cmath>
#include <cstdint>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

namespace halcyra::virtual_kinect::room {
namespace {

constexpr std::uint64_t kSet = 5;

// A wall that faces the camera, at this depth and with this echo.
DepthCanvas wall(float depth, float echo) {
  const cv::Size size(kDepthCamera.width, kDepthCamera.height);
  return {kDepthCamera, cv::Mat(size, CV_32F, cv::Scalar(1.0 / static_cast<double>(depth))),
          cv::Mat(size, CV_32F, cv::Scalar(static_cast<double>(echo)))};
}

cv::Mat without_edges(const cv::Mat& picture) { return picture.colRange(1, picture.cols - 1); }

class DepthSensorTest : public testing::Test {
 protected:
  cv::Mat infrared(float depth) const {
    return measure_infrared(wall(depth, 0.5F), make_vignette(kDepthCamera), noise_, kSet);
  }

  const SensorNoise noise_{3};
};

TEST_F(DepthSensorTest, MeasuresTheDepthWithMoreNoiseFartherAway) {
  double before = 0.0;
  for (const float depth : {600.0F, 2000.0F, 4000.0F}) {
    cv::Scalar mean;
    cv::Scalar deviation;
    cv::meanStdDev(without_edges(measure_depth(wall(depth, 0.5F), noise_, kSet)), mean, deviation);
    EXPECT_NEAR(mean[0], depth, 0.3);
    EXPECT_GT(deviation[0], before);
    EXPECT_LT(deviation[0], 20.0);
    before = deviation[0];
  }
}

TEST_F(DepthSensorTest, MeasuresNothingOutOfRange) {
  for (const float depth : {300.0F, 490.0F, 4600.0F, 9000.0F}) {
    EXPECT_EQ(cv::countNonZero(measure_depth(wall(depth, 0.5F), noise_, kSet)), 0) << depth;
  }
}

TEST_F(DepthSensorTest, MeasuresNothingWithoutLight) {
  EXPECT_EQ(cv::countNonZero(measure_depth(wall(1000.0F, 0.01F), noise_, kSet)), 0);
}

TEST_F(DepthSensorTest, MeasuresNothingOnEitherSideOfAnOutline) {
  const DepthCanvas canvas = wall(2000.0F, 0.5F);
  canvas.nearness.colRange(200, canvas.nearness.cols).setTo(1.0 / 1500.0);
  const cv::Mat depth = measure_depth(canvas, noise_, kSet);
  EXPECT_EQ(cv::countNonZero(depth.colRange(199, 201)), 0);
  EXPECT_EQ(cv::countNonZero(depth.col(198)), depth.rows);
  EXPECT_EQ(cv::countNonZero(depth.col(201)), depth.rows);
}

TEST_F(DepthSensorTest, LeavesTheOutermostColumnsAtZero) {
  for (const cv::Mat& picture :
       {measure_depth(wall(1000.0F, 0.5F), noise_, kSet), infrared(1000.0F)}) {
    EXPECT_EQ(cv::countNonZero(picture.col(0)), 0);
    EXPECT_EQ(cv::countNonZero(picture.col(picture.cols - 1)), 0);
    EXPECT_EQ(cv::countNonZero(without_edges(picture)), picture.rows * (picture.cols - 2));
  }
}

TEST_F(DepthSensorTest, GetsAQuarterOfTheLightFromTwiceAsFar) {
  const cv::Mat near = infrared(1000.0F);
  const cv::Mat far = infrared(2000.0F);
  EXPECT_NEAR(cv::mean(near)[0] / cv::mean(far)[0], 4.0, 0.1);
}

TEST_F(DepthSensorTest, GetsLessLightInTheCorners) {
  const cv::Mat picture = infrared(1000.0F);
  const double middle = cv::mean(picture(cv::Rect(240, 200, 20, 20)))[0];
  EXPECT_LT(cv::mean(picture(cv::Rect(1, 1, 20, 20)))[0], 0.6 * middle);
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
