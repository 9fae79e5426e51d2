#include "capture/frame_conversion.hpp"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// A picture of one row.
cv::Mat row_of(const std::vector<float>& values) { return cv::Mat(values, true).reshape(1, 1); }

int truncated(double value) { return std::clamp(static_cast<int>(std::trunc(value)), 0, 255); }

// ---- The rules once more, in the plainest form. An empty picture means "not convertible".

bool counts_as_intensity(float pixel) { return std::fabs(pixel) <= FLT_MAX && pixel > 0; }

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

// ---- Random pictures of every kind of content.

class RandomPictures : public ::testing::TestWithParam<unsigned int> {
 protected:
  std::mt19937 random_{GetParam()};

  int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  double real(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random_);
  }

  float any_bits() {
    const auto bits = static_cast<std::uint32_t>(random_());
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }

  float special() {
    const std::vector<float> values = {
        0.0F,      -0.0F,        kNan,          kInfinity, -kInfinity, FLT_MAX, -FLT_MAX, FLT_MIN,
        -FLT_MIN,  FLT_TRUE_MIN, -FLT_TRUE_MIN, -1.0F,     -700.0F,    249.0F,  250.0F,   500.0F,
        249.9999F, 8000.0F,      8000.0005F,    4500.0F,   4500.001F,  499.99F, 2500.0F,  1.0F};
    return values[static_cast<std::size_t>(whole(0, static_cast<int>(values.size()) - 1))];
  }

  // Values between two random bounds that lie `range` apart, and some special ones.
  cv::Mat picture(double low, double range, double share_of_specials) {
    cv::Mat values(whole(1, 24), whole(1, 24), CV_32FC1);
    for (float& value : cv::Mat_<float>(values)) {
      value = static_cast<float>(real(low, low + range));
      if (real(0, 1) < share_of_specials) value = special();
    }
    return values;
  }

  cv::Mat picture_of_any_bits() {
    cv::Mat values(whole(1, 24), whole(1, 24), CV_32FC1);
    for (float& value : cv::Mat_<float>(values)) value = any_bits();
    return values;
  }
};

void expect_infrared_by_the_rules(const cv::Mat& intensities) {
  const cv::Mat before(3, 5, CV_8UC3, cv::Scalar(1, 2, 3));
  cv::Mat picture = before.clone();
  const cv::Mat expected = ruled_infrared(intensities);
  EXPECT_EQ(infrared_picture(intensities, picture), !expected.empty());
  EXPECT_TRUE(same_pixels(picture, expected.empty() ? before : expected));
}

void expect_depth_by_the_rules(const cv::Mat& millimetres) {
  const cv::Mat before(3, 5, CV_8UC3, cv::Scalar(1, 2, 3));
  cv::Mat picture = before.clone();
  const cv::Mat expected = ruled_depth(millimetres);
  EXPECT_EQ(depth_picture(millimetres, picture), !expected.empty());
  EXPECT_TRUE(same_pixels(picture, expected.empty() ? before : expected));
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomPictures, ::testing::Range(1U, 5U));

TEST_P(RandomPictures, InfraredOfOrdinaryScenes) {
  for (int i = 0; i < 20; ++i) {
    expect_infrared_by_the_rules(picture(real(0, 500), real(0, 65535), 0));
    expect_infrared_by_the_rules(picture(real(0, 500), real(0, 3000), 0.3));
  }
}

// 0.85 x range is 1200 at a range of 1411.76, and the floor of 1200 cuts from a range of 1200 on.
TEST_P(RandomPictures, InfraredAroundTheCap) {
  for (int i = 0; i < 30; ++i) {
    expect_infrared_by_the_rules(picture(real(0, 500), real(1190, 1210), 0));
    expect_infrared_by_the_rules(picture(real(0, 500), real(1400, 1425), 0));
  }
}

TEST_P(RandomPictures, InfraredOfTinyRanges) {
  for (int i = 0; i < 20; ++i) {
    expect_infrared_by_the_rules(picture(real(0, 10), real(0, 2), 0));
    expect_infrared_by_the_rules(picture(0, 1e-40, 0.2));
  }
}

TEST_P(RandomPictures, InfraredOfAnyBits) {
  for (int i = 0; i < 20; ++i) expect_infrared_by_the_rules(picture_of_any_bits());
}

// The floats on both sides of where one level ends and the next begins.
cv::Mat around(const std::vector<double>& borders) {
  std::vector<float> values;
  for (const double border : borders) {
    float value = static_cast<float>(border);
    for (int i = 0; i < 3; ++i) value = std::nextafter(value, -kInfinity);
    for (int i = 0; i < 7; ++i, value = std::nextafter(value, kInfinity)) values.push_back(value);
  }
  return row_of(values);
}

TEST_P(RandomPictures, InfraredWhereLevelsMeet) {
  for (int i = 0; i < 20; ++i) {
    const double low = std::round(real(1, 500));
    const double high = low + std::round(real(300, 1200));
    std::vector<double> borders;
    for (int level = 0; level <= 255; ++level) borders.push_back(low + level * (high - low) / 255);
    expect_infrared_by_the_rules(around(borders));
  }
}

TEST_P(RandomPictures, DepthOfOrdinaryScenes) {
  for (int i = 0; i < 20; ++i) {
    expect_depth_by_the_rules(picture(0, 9000, 0));
    expect_depth_by_the_rules(picture(400, 4300, 0.3));
  }
}

TEST(DepthPicture, IsByTheRulesWhereLevelsMeet) {
  std::vector<double> borders;
  for (int level = 0; level <= 255; ++level) borders.push_back(500 + level * 4000.0 / 255);
  expect_depth_by_the_rules(around(borders));
}

TEST(DepthPicture, IsByTheRulesForEveryTenthOfAMillimetre) {
  cv::Mat millimetres(91, 1000, CV_32FC1);
  for (int i = 0; i < 91000; ++i)
    millimetres.at<float>(i / 1000, i % 1000) = 0.1F * static_cast<float>(i);
  expect_depth_by_the_rules(millimetres);
}

TEST_P(RandomPictures, DepthAtTheEdgesOfItsRanges) {
  for (const double edge : {250.0, 500.0, 4500.0, 8000.0}) {
    for (int i = 0; i < 10; ++i) expect_depth_by_the_rules(picture(edge - 0.001, 0.002, 0.05));
  }
}

TEST_P(RandomPictures, DepthOfAnyBits) {
  for (int i = 0; i < 20; ++i) expect_depth_by_the_rules(picture_of_any_bits());
}

// ---- Infrared, rule by rule.

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

// ---- Depth, rule by rule.

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

// ---- Colour.

TEST(ColorImages, ReadsEitherChannelOrder) {
  const cv::Mat bgrx(1, 1, CV_8UC4, cv::Scalar(10, 100, 200, 77));
  const cv::Mat rgbx(1, 1, CV_8UC4, cv::Scalar(200, 100, 10, 77));
  for (const ColorImages& images :
       {color_images(bgrx, ChannelOrder::kBgrx), color_images(rgbx, ChannelOrder::kRgbx)}) {
    EXPECT_EQ(images.bgr.at<cv::Vec3b>(0, 0), cv::Vec3b(10, 100, 200));
    // 0.114 x 10 + 0.587 x 100 + 0.299 x 200 = 119.64
    EXPECT_EQ(images.grey.at<std::uint8_t>(0, 0), 120);
  }
}

TEST(ColorImages, ConvertsWholePicturesBothTimesFromTheFourChannels) {
  cv::Mat pixels(13, 17, CV_8UC4);
  cv::randu(pixels, 0, 256);
  cv::Mat bgr;
  cv::Mat grey;
  cv::cvtColor(pixels, bgr, cv::COLOR_BGRA2BGR);
  cv::cvtColor(pixels, grey, cv::COLOR_BGRA2GRAY);
  const ColorImages bgrx = color_images(pixels, ChannelOrder::kBgrx);
  EXPECT_TRUE(same_pixels(bgrx.bgr, bgr));
  EXPECT_TRUE(same_pixels(bgrx.grey, grey));

  cv::cvtColor(pixels, bgr, cv::COLOR_RGBA2BGR);
  cv::cvtColor(pixels, grey, cv::COLOR_RGBA2GRAY);
  const ColorImages rgbx = color_images(pixels, ChannelOrder::kRgbx);
  EXPECT_TRUE(same_pixels(rgbx.bgr, bgr));
  EXPECT_TRUE(same_pixels(rgbx.grey, grey));
}

TEST(ColorImages, OwnTheirPixels) {
  cv::Mat pixels(2, 2, CV_8UC4, cv::Scalar(1, 2, 3, 4));
  const ColorImages images = color_images(pixels, ChannelOrder::kBgrx);
  pixels.setTo(cv::Scalar::all(200));
  EXPECT_EQ(images.bgr.at<cv::Vec3b>(1, 1), cv::Vec3b(1, 2, 3));
}

}  // namespace
}  // namespace halcyra
