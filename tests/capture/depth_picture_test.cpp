#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "capture/frame_conversion.hpp"
#include "tests/capture/sensor_pixels.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

// The rules again, in plain code. Empty where the picture is not convertible.
cv::Mat ruled_depth(const cv::Mat& millimetres) {
  cv::Mat levels(millimetres.size(), CV_8UC1, cv::Scalar(0));
  int in_range = 0;
  for (int y = 0; y < levels.rows; ++y) {
    for (int x = 0; x < levels.cols; ++x) {
      const double d = millimetres.at<float>(y, x);
      if (!std::isfinite(d) || !(250 <= d && d <= 8000)) continue;
      ++in_range;
      const double c = d < 500 ? 500 : d > 4500 ? 4500 : d;
      levels.at<std::uint8_t>(y, x) =
          static_cast<std::uint8_t>(truncated(255 - ((c - 500) / 4000) * 255));
    }
  }
  if (in_range == 0) return {};
  cv::Mat picture;
  cv::applyColorMap(levels, picture, cv::COLORMAP_JET);
  return picture;
}

void expect_depth_by_the_rules(const cv::Mat& millimetres) {
  const cv::Mat before(3, 5, CV_8UC3, cv::Scalar(1, 2, 3));
  cv::Mat picture = before.clone();
  const cv::Mat expected = ruled_depth(millimetres);
  EXPECT_EQ(depth_picture(millimetres, picture), !expected.empty());
  EXPECT_TRUE(same_pixels(picture, expected.empty() ? before : expected));
}

class RandomDepth : public RandomPictures {};

INSTANTIATE_TEST_SUITE_P(Seeds, RandomDepth, ::testing::Range(1U, 5U));

TEST_P(RandomDepth, OfOrdinaryScenes) {
  for (int i = 0; i < 20; ++i) {
    expect_depth_by_the_rules(picture(0, 9000, 0));
    expect_depth_by_the_rules(picture(400, 4300, 0.3));
  }
}

TEST_P(RandomDepth, AtTheEdgesOfItsRanges) {
  for (const double edge : {250.0, 500.0, 4500.0, 8000.0}) {
    for (int i = 0; i < 10; ++i) expect_depth_by_the_rules(picture(edge - 0.001, 0.002, 0.05));
  }
}

TEST_P(RandomDepth, OfAnyBits) {
  for (int i = 0; i < 20; ++i) expect_depth_by_the_rules(picture_of_any_bits());
}

TEST(DepthPicture, IsByTheRulesWhereLevelsMeet) {
  std::vector<double> borders;
  for (int level = 0; level <= 255; ++level) borders.push_back(500 + level * 4000.0 / 255);
  expect_depth_by_the_rules(around(borders));
}

TEST(DepthPicture, IsByTheRulesForEveryTenthOfAMillimetre) {
  cv::Mat millimetres(91, 1000, CV_32FC1);
  float tenths = 0;
  for (float& pixel : cv::Mat_<float>(millimetres)) pixel = 0.1F * tenths++;
  expect_depth_by_the_rules(millimetres);
}

cv::Vec3b jet(int level) {
  cv::Mat picture;
  cv::applyColorMap(cv::Mat(1, 1, CV_8UC1, cv::Scalar(level)), picture, cv::COLORMAP_JET);
  return picture.at<cv::Vec3b>(0, 0);
}

// The colour of one depth beside a pixel that makes every picture convertible.
cv::Vec3b depth_color(float millimetres) {
  cv::Mat picture;
  EXPECT_TRUE(depth_picture(row_of({millimetres, 1000}), picture));
  return picture.at<cv::Vec3b>(0, 0);
}

TEST(DepthPicture, RunsFromNearRedToFarBlue) {
  EXPECT_EQ(depth_color(250), jet(255));
  EXPECT_EQ(depth_color(499.9F), jet(255));
  EXPECT_EQ(depth_color(500), jet(255));
  EXPECT_EQ(depth_color(2500), jet(127));  // 127.5
  EXPECT_EQ(depth_color(4484), jet(1));    // 1.02
  EXPECT_EQ(depth_color(4485), jet(0));    // 0.96
  EXPECT_EQ(depth_color(4500), jet(0));
  EXPECT_EQ(depth_color(8000), jet(0));
  EXPECT_NE(jet(127), jet(128));
  EXPECT_NE(jet(0), jet(1));
  EXPECT_GT(jet(255)[2], jet(255)[0]);
  EXPECT_GT(jet(0)[0], jet(0)[2]);
}

TEST(DepthPicture, TruncatesLevels) {
  EXPECT_EQ(depth_color(500.01F), jet(254));  // 254.999
  EXPECT_EQ(depth_color(510), jet(254));      // 254.36
  EXPECT_NE(jet(254), jet(255));
}

TEST(DepthPicture, PaintsDepthsOutOfRangeAsTheFarthest) {
  const std::vector<float> outside = {249,       249.99F, 8000.001F, 0,    -600,
                                      kInfinity, kNan,    1e30F,     -0.0F};
  for (const float depth : outside) EXPECT_EQ(depth_color(depth), jet(0)) << depth;
}

TEST(DepthPicture, NeedsOneDepthInRange) {
  for (const float outside : {0.0F, 249.0F, std::nextafter(250.0F, 0.0F), 8000.001F, kNan,
                              std::nextafter(8000.0F, 9000.0F), kInfinity, -600.0F}) {
    const cv::Mat before(1, 2, CV_8UC3, cv::Scalar(9, 8, 7));
    cv::Mat picture = before.clone();
    EXPECT_FALSE(depth_picture(row_of({outside, outside}), picture)) << outside;
    EXPECT_TRUE(same_pixels(picture, before));
  }
  for (const float inside : {250.0F, 300.0F, 4500.0F, 5000.0F, 8000.0F}) {
    cv::Mat picture;
    EXPECT_TRUE(depth_picture(row_of({0, 0, inside}), picture)) << inside;
    EXPECT_EQ(picture.size(), cv::Size(3, 1));
  }
}

TEST(DepthPicture, ReadsPartOfALargerPicture) {
  cv::Mat larger(7, 9, CV_32FC1);
  cv::randu(larger, 1.0, 9000.0);
  const cv::Mat part = larger(cv::Rect(2, 1, 5, 4));
  cv::Mat picture;
  ASSERT_TRUE(depth_picture(part, picture));
  EXPECT_TRUE(same_pixels(picture, ruled_depth(part.clone())));
}

}  // namespace
}  // namespace halcyra
