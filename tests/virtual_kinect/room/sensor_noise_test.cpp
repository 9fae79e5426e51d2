#include "virtual_kinect/room/sensor_noise.hpp"

#include <cmath>
#include <cstdint>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

namespace halcyra::virtual_kinect::room {
namespace {

cv::Mat noisy(const SensorNoise& noise, std::uint64_t set, int level = 100) {
  cv::Mat picture(200, 300, CV_8UC4, cv::Scalar::all(level));
  noise.add_to_color(picture, cv::Rect({}, picture.size()), set, picture);
  return picture;
}

bool same(const cv::Mat& a, const cv::Mat& b) { return cv::norm(a, b, cv::NORM_INF) == 0.0; }

TEST(SensorNoise, IsTheSameForASeedAndASet) {
  EXPECT_TRUE(same(noisy(SensorNoise(1), 4), noisy(SensorNoise(1), 4)));
  EXPECT_FALSE(same(noisy(SensorNoise(1), 4), noisy(SensorNoise(1), 5)));
  EXPECT_FALSE(same(noisy(SensorNoise(1), 4), noisy(SensorNoise(2), 4)));
}

TEST(SensorNoise, MovesColorsByALevelOrTwoAndLeavesTheFourthByte) {
  const cv::Mat picture = noisy(SensorNoise(1), 4);
  cv::Scalar mean;
  cv::Scalar deviation;
  cv::meanStdDev(picture, mean, deviation);
  for (int channel = 0; channel < 3; ++channel) {
    EXPECT_NEAR(mean[channel], 100.0, 0.1);
    EXPECT_NEAR(deviation[channel], 1.28, 0.1);
  }
  cv::Mat fourth;
  cv::extractChannel(picture, fourth, 3);
  EXPECT_EQ(cv::countNonZero(fourth != 100), 0);
}

TEST(SensorNoise, DoesNotWrapAround) {
  double least = 0.0;
  cv::minMaxLoc(noisy(SensorNoise(1), 4, 255).reshape(1), &least, nullptr);
  EXPECT_GT(least, 245.0);
  double most = 0.0;
  cv::minMaxLoc(noisy(SensorNoise(1), 4, 0).reshape(1), nullptr, &most);
  EXPECT_LT(most, 10.0);
}

TEST(SensorNoise, GivesEachRowAndPurposeItsOwnNormalNumbers) {
  constexpr int kLength = 512;
  const SensorNoise noise(1);
  cv::Mat rows(400, kLength, CV_32F);
  for (int row = 0; row < rows.rows; ++row) {
    const float* numbers = noise.row(kLength, row / 2, 9, row % 2 == 0 ? 1U : 2U);
    cv::Mat(1, kLength, CV_32F, const_cast<float*>(numbers)).copyTo(rows.row(row));
    if (row > 0) {
      EXPECT_FALSE(same(rows.row(row - 1), rows.row(row))) << row;
    }
  }
  cv::Scalar mean;
  cv::Scalar deviation;
  cv::meanStdDev(rows, mean, deviation);
  EXPECT_NEAR(mean[0], 0.0, 0.03);
  EXPECT_NEAR(deviation[0], 1.0, 0.03);
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
