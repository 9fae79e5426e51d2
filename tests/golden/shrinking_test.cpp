#include "tests/golden/shrinking.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "tests/support/photograph.hpp"

namespace halcyra {
namespace {

// Golden pictures come from such a machine. Elsewhere the library's rounding may differ.
#ifdef __x86_64__
constexpr double kLargestDifference = 0.0;
#else
constexpr double kLargestDifference = 1.0;
#endif

cv::Mat shrunk_by_library(const cv::Mat& picture, cv::Size size) {
  cv::Mat result;
  cv::resize(picture, result, size, 0, 0, cv::INTER_AREA);
  return result;
}

TEST(Shrinking, IsThatOfTheLibrary) {
  cv::RNG random(30);
  const cv::Mat photograph = color_photograph();
  cv::Mat grey;
  cv::cvtColor(photograph, grey, cv::COLOR_BGR2GRAY);
  int compared = 0;
  while (compared < 200) {
    const cv::Mat picture = (compared % 2 == 0 ? photograph : grey)(
        cv::Rect(0, 0, random.uniform(1, 512), random.uniform(1, 512)));
    const cv::Size size(random.uniform(1, picture.cols + 1), random.uniform(1, picture.rows + 1));
    if (!shrinks_with_fractions(picture.size(), size)) continue;
    EXPECT_LE(cv::norm(shrunk(picture, size), shrunk_by_library(picture, size), cv::NORM_INF),
              kLargestDifference)
        << picture.size() << " to " << size;
    ++compared;
  }
}

TEST(Shrinking, HasNoFractionsWithWholeFactorsOrGrowingSides) {
  EXPECT_FALSE(shrinks_with_fractions({1920, 1080}, {960, 360}));
  EXPECT_FALSE(shrinks_with_fractions({100, 100}, {50, 101}));
  EXPECT_FALSE(shrinks_with_fractions({100, 100}, {101, 50}));
  EXPECT_TRUE(shrinks_with_fractions({1920, 1080}, {959, 360}));
}

}  // namespace
}  // namespace halcyra
