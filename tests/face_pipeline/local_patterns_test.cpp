#include "face_pipeline/local_patterns.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/face.hpp>
#include <opencv2/imgproc.hpp>

#include "tests/face_pipeline/many_pictures.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

// The points around a pixel, by the bit that each decides.
std::array<cv::Point2f, 8> circle() {
  std::array<cv::Point2f, 8> points;
  for (std::size_t n = 0; n < points.size(); ++n) {
    const double angle = CV_PI * static_cast<double>(n) / 4;
    points[n] = {static_cast<float>(std::cos(angle)), static_cast<float>(-std::sin(angle))};
  }
  return points;
}

// The pattern of one pixel by the definition of the operator, in float.
int pattern_at(const cv::Mat& picture, int row, int column) {
  static const std::array<cv::Point2f, 8> kCircle = circle();
  const float center = picture.at<uchar>(row, column);
  int pattern = 0;
  int bit = 1;
  for (const auto& [x, y] : kCircle) {
    const int left = column + static_cast<int>(std::floor(x));
    const int right = column + static_cast<int>(std::ceil(x));
    const int upper = row + static_cast<int>(std::floor(y));
    const int lower = row + static_cast<int>(std::ceil(y));
    const float dx = x - std::floor(x);
    const float dy = y - std::floor(y);
    const float level = (1 - dx) * (1 - dy) * picture.at<uchar>(upper, left) +
                        dx * (1 - dy) * picture.at<uchar>(upper, right) +
                        (1 - dx) * dy * picture.at<uchar>(lower, left) +
                        dx * dy * picture.at<uchar>(lower, right);
    const bool equal = std::abs(level - center) < std::numeric_limits<float>::epsilon();
    if (level > center || equal) pattern += bit;
    bit *= 2;
  }
  return pattern;
}

// Of 8 x 8 cells of 19 x 19 pixels each, from the second row and column on.
cv::Mat counts_by_definition(const cv::Mat& picture) {
  cv::Mat counts(1, kPatternBins, CV_32FC1, cv::Scalar(0));
  for (int row = 0; row < 152; ++row) {
    for (int column = 0; column < 152; ++column) {
      const int cell = row / 19 * 8 + column / 19;
      counts.at<float>(cell * 256 + pattern_at(picture, row + 1, column + 1)) += 1;
    }
  }
  return counts;
}

TEST(PatternHistogram, CountsThePatternsOfEachCell) {
  for (const cv::Mat& picture : many_pictures()) {
    cv::Mat shares = counts_by_definition(picture);
    shares /= 19 * 19;
    ASSERT_TRUE(same_pixels(pattern_histogram(picture).shares, shares));
  }
}

TEST(PatternHistogram, KnowsWhichSharesArePresent) {
  cv::RNG random(1);
  const cv::Mat noise = noise_of_levels(256, 0, random);
  const PatternHistogram made = pattern_histogram(noise);
  const PatternHistogram known = known_pattern_histogram(made.shares);
  EXPECT_EQ(made.present, known.present);
  ASSERT_EQ(known.present.size(), 256U);
  for (int bin = 0; bin < kPatternBins; ++bin) {
    const bool present =
        (known.present[static_cast<std::size_t>(bin / 64)] >> (bin % 64) & 1U) == 1;
    ASSERT_EQ(present, made.shares.at<float>(bin) > 0) << bin;
  }
}

TEST(PatternDistance, IsThatOfCompareHist) {
  const std::vector<cv::Mat>& pictures = many_pictures();
  const PatternHistogram first = pattern_histogram(pictures.front());
  const PatternHistogram last = pattern_histogram(pictures.back());
  for (const cv::Mat& picture : pictures) {
    const PatternHistogram other = pattern_histogram(picture);
    EXPECT_EQ(pattern_distance(first, other),
              cv::compareHist(first.shares, other.shares, cv::HISTCMP_CHISQR_ALT));
    EXPECT_EQ(pattern_distance(other, last),
              cv::compareHist(other.shares, last.shares, cv::HISTCMP_CHISQR_ALT));
  }
}

TEST(PatternDistance, IsNothingBetweenEqualPictures) {
  const PatternHistogram histogram = pattern_histogram(many_pictures().front());
  EXPECT_EQ(pattern_distance(histogram, histogram), 0.0);
}

// It need not be true: an OpenCV that rounds otherwise gives other histograms.
TEST(PatternsMatchOpencv, IsWhatTheHistogramsOfManyPicturesSay) {
  const std::vector<cv::Mat>& pictures = many_pictures();
  const auto model = cv::face::LBPHFaceRecognizer::create(1, 8, 8, 8);
  model->train(pictures, std::vector<int>(pictures.size(), 1));
  const std::vector<cv::Mat> theirs = model->getHistograms();
  bool all_equal = true;
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const cv::Mat ours = pattern_histogram(pictures[i]).shares;
    if (cv::norm(ours, theirs[i], cv::NORM_INF) != 0) all_equal = false;
  }
  EXPECT_EQ(patterns_match_opencv(), all_equal);
}

}  // namespace
}  // namespace halcyra
