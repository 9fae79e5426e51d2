#include <algorithm>
#include <cfloat>
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

bool counts_as_intensity(float pixel) { return std::fabs(pixel) <= FLT_MAX && pixel > 0; }

// The rules again, in plain code. Empty where the picture is not convertible.
cv::Mat ruled_infrared_levels(const cv::Mat& intensities) {
  std::vector<double> valid;
  for (int i = 0; i < intensities.rows * intensities.cols; ++i) {
    const float pixel = intensities.at<float>(i / intensities.cols, i % intensities.cols);
    if (counts_as_intensity(pixel)) valid.push_back(pixel);
  }
  if (valid.empty()) return {};
  const double lo = *std::min_element(valid.begin(), valid.end());
  double hi = *std::max_element(valid.begin(), valid.end());
  if (hi <= lo) return {};
  double range = hi - lo;
  const double cap = 0.85 * range > 1200 ? lo + 0.85 * range : lo + 1200;
  if (hi > cap) {
    hi = cap;
    range = cap - lo;
  }
  const double scale = 255 / std::max(range, 1.0);
  cv::Mat levels(intensities.size(), CV_8UC1, cv::Scalar(0));
  for (int y = 0; y < levels.rows; ++y) {
    for (int x = 0; x < levels.cols; ++x) {
      const float pixel = intensities.at<float>(y, x);
      if (!counts_as_intensity(pixel)) continue;
      const double p = pixel;
      levels.at<std::uint8_t>(y, x) =
          static_cast<std::uint8_t>(truncated(((p < hi ? p : hi) - lo) * scale));
    }
  }
  return levels;
}

cv::Mat ruled_infrared(const cv::Mat& intensities) {
  const cv::Mat levels = ruled_infrared_levels(intensities);
  if (levels.empty()) return {};
  cv::Mat equalized;
  cv::equalizeHist(levels, equalized);
  cv::Mat picture;
  cv::cvtColor(equalized, picture, cv::COLOR_GRAY2BGR);
  return picture;
}

void expect_infrared_by_the_rules(const cv::Mat& intensities) {
  const cv::Mat before(3, 5, CV_8UC3, cv::Scalar(1, 2, 3));
  cv::Mat picture = before.clone();
  const cv::Mat expected = ruled_infrared(intensities);
  EXPECT_EQ(infrared_picture(intensities, picture), !expected.empty());
  EXPECT_TRUE(same_pixels(picture, expected.empty() ? before : expected));
}

class RandomInfrared : public RandomPictures {};

INSTANTIATE_TEST_SUITE_P(Seeds, RandomInfrared, ::testing::Range(1U, 5U));

TEST_P(RandomInfrared, OfOrdinaryScenes) {
  for (int i = 0; i < 20; ++i) {
    expect_infrared_by_the_rules(picture(real(0, 500), real(0, 65535), 0));
    expect_infrared_by_the_rules(picture(real(0, 500), real(0, 3000), 0.3));
  }
}

// 0.85 x range is 1200 at a range of 1411.76, and the floor of 1200 cuts from a range of 1200 on.
TEST_P(RandomInfrared, AroundTheCap) {
  for (int i = 0; i < 30; ++i) {
    expect_infrared_by_the_rules(picture(real(0, 500), real(1190, 1210), 0));
    expect_infrared_by_the_rules(picture(real(0, 500), real(1400, 1425), 0));
  }
}

TEST_P(RandomInfrared, OfTinyRanges) {
  for (int i = 0; i < 20; ++i) {
    expect_infrared_by_the_rules(picture(real(0, 10), real(0, 2), 0));
    expect_infrared_by_the_rules(picture(0, 1e-40, 0.2));
  }
}

TEST_P(RandomInfrared, OfAnyBits) {
  for (int i = 0; i < 20; ++i) expect_infrared_by_the_rules(picture_of_any_bits());
}

TEST_P(RandomInfrared, WhereLevelsMeet) {
  for (int i = 0; i < 20; ++i) {
    const double low = std::round(real(1, 500));
    const double high = low + std::round(real(300, 1200));
    std::vector<double> borders;
    for (int level = 0; level <= 255; ++level) borders.push_back(low + level * (high - low) / 255);
    expect_infrared_by_the_rules(around(borders));
  }
}

// The grey of each pixel of a one-row picture.
std::vector<int> infrared_greys(const std::vector<float>& intensities) {
  cv::Mat picture;
  EXPECT_TRUE(infrared_picture(row_of(intensities), picture));
  std::vector<int> greys;
  for (int x = 0; x < picture.cols; ++x) {
    const cv::Vec3b pixel = picture.at<cv::Vec3b>(0, x);
    EXPECT_EQ(pixel, cv::Vec3b::all(pixel[0]));
    greys.push_back(pixel[0]);
  }
  return greys;
}

TEST(InfraredPicture, NeedsTwoDifferentIntensities) {
  const std::vector<std::vector<float>> without = {
      {0},        {5},           {0, 0, 0},         {-3, -7, 0},        {7, 7, 7},
      {0, 7, -9}, {kNan, 12, 0}, {kInfinity, 12.5}, {-kInfinity, kNan}, {FLT_MAX, FLT_MAX}};
  for (const std::vector<float>& intensities : without) {
    const cv::Mat before(1, 2, CV_8UC3, cv::Scalar(9, 8, 7));
    cv::Mat picture = before.clone();
    EXPECT_FALSE(infrared_picture(row_of(intensities), picture));
    EXPECT_TRUE(same_pixels(picture, before));
  }
}

TEST(InfraredPicture, EqualisesTheStretchedIntensities) {
  // Levels 0, 127 and 254; the two upper bins hold one pixel each and share 0 to 255.
  EXPECT_EQ(infrared_greys({100, 150, 200}), (std::vector<int>{0, 128, 255}));
  // Level 254 holds three of the four pixels above the lowest bin.
  EXPECT_EQ(infrared_greys({100, 150, 200, 200, 200}), (std::vector<int>{0, 64, 255, 255, 255}));
}

TEST(InfraredPicture, TruncatesLevels) {
  // 49.9 and 50.1 of 100 give 127.245 and 127.755, which rounding would tell apart.
  const std::vector<int> middle = infrared_greys({100, 149.9F, 150.1F, 200});
  EXPECT_EQ(middle[1], middle[2]);
  // 100 of 100 gives 254.99999999999997 and so the level of 99.9 of 100; 99.5 gives 253.
  const std::vector<int> top = infrared_greys({100, 199.5F, 199.9F, 200});
  EXPECT_LT(top[1], top[2]);
  EXPECT_EQ(top[2], top[3]);
}

TEST(InfraredPicture, SaturatesAboveTheCap) {
  // 1 + 0.85 x 9999 = 8500.15
  const std::vector<int> greys = infrared_greys({1, 8500, 8500.25F, 9000, 10000});
  EXPECT_LT(greys[1], greys[2]);
  EXPECT_EQ(greys[2], 255);
  EXPECT_EQ(greys[3], 255);
  EXPECT_EQ(greys[4], 255);
}

TEST(InfraredPicture, CapsNotBelow1200AboveTheLowest) {
  // Of a range of 1400, 0.85 would be 1190: without the floor 1295 and 1500 would be one level.
  const std::vector<int> greys = infrared_greys({100, 1295, 1300, 1500});
  EXPECT_LT(greys[1], greys[2]);
  EXPECT_EQ(greys[2], greys[3]);
}

TEST(InfraredPicture, DoesNotStretchRangesBelowOne) {
  // At 255 levels per unit the two in the middle lie at 102.3 and 102.9, at 510 at 204.5 and 205.8.
  const std::vector<int> greys = infrared_greys({10, 10.401F, 10.4035F, 10.5F});
  EXPECT_EQ(greys[1], greys[2]);
  // Ranges too small for one level are convertible all the same, and black.
  EXPECT_EQ(infrared_greys({10, 10.0001F}), (std::vector<int>{0, 0}));
}

TEST(InfraredPicture, LeavesPixelsWithoutIntensityBlack) {
  EXPECT_EQ(infrared_greys({1, 10000, 0, -5, kNan, kInfinity, -kInfinity}),
            (std::vector<int>{0, 255, 0, 0, 0, 0, 0}));
}

TEST(InfraredPicture, CountsTheSmallestAndTheLargestFloats) {
  EXPECT_EQ(infrared_greys({FLT_TRUE_MIN, FLT_MAX}), (std::vector<int>{0, 255}));
}

TEST(InfraredPicture, ReadsPartOfALargerPicture) {
  cv::Mat larger(7, 9, CV_32FC1);
  cv::randu(larger, 1.0, 5000.0);
  const cv::Mat part = larger(cv::Rect(2, 1, 5, 4));
  cv::Mat picture;
  ASSERT_TRUE(infrared_picture(part, picture));
  EXPECT_TRUE(same_pixels(picture, ruled_infrared(part.clone())));
}

}  // namespace
}  // namespace halcyra
