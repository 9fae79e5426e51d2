#include "dashboard/shrinking.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "dashboard/dashboard_geometry.hpp"
#include "tests/dashboard/expected_drawing.hpp"

namespace halcyra {
namespace {

constexpr int kBorder = 5;  // pixels around a part of a larger picture

// Part of a larger picture, so that rows do not follow each other in memory.
cv::Mat part(const cv::Mat& whole) {
  return whole(cv::Rect(kBorder, kBorder, whole.cols - 2 * kBorder, whole.rows - 2 * kBorder));
}

cv::Mat noise(cv::Size size, cv::RNG& random) {
  cv::Mat whole(size + cv::Size(2 * kBorder, 2 * kBorder), CV_8UC3);
  random.fill(whole, cv::RNG::UNIFORM, 0, 256);
  return part(whole);
}

void set_frame(cv::Mat& whole) {
  const cv::Mat inside = part(whole).clone();
  whole.setTo(cv::Scalar(1, 2, 3));
  inside.copyTo(part(whole));
}

// Both kernels make the pixels of cv::resize, and touch no others.
void expect_as_library(const cv::Mat& picture, cv::Size size) {
  ASSERT_TRUE(can_shrink(picture, size)) << picture.size() << " to " << size;
  cv::Mat expected(size + cv::Size(2 * kBorder, 2 * kBorder), CV_8UC3);
  cv::Mat inside = part(expected);
  cv::resize(picture, inside, size, 0, 0, cv::INTER_AREA);
  set_frame(expected);
  for (const ShrinkingKernel kernel : shrinking_kernels()) {
    cv::Mat shrunk(expected.size(), CV_8UC3, cv::Scalar(1, 2, 3));
    cv::Mat target = part(shrunk);
    shrink(picture, target, kernel);
    EXPECT_EQ(cv::norm(shrunk, expected, cv::NORM_INF), 0)
        << picture.size() << " to " << size << ", kernel " << static_cast<int>(kernel);
  }
}

class Shrinking : public ::testing::Test {
 protected:
  void SetUp() override {
    if (shrinking_kernels().empty()) GTEST_SKIP() << "OpenCV shrinks on this processor";
  }

  cv::Size random_size(cv::Size most) {
    return {random_.uniform(1, most.width + 1), random_.uniform(1, most.height + 1)};
  }

  cv::RNG random_{7};
};

TEST_F(Shrinking, MakesThePixelsOfTheLibraryForAnySizes) {
  int compared = 0;
  while (compared < 400) {
    const cv::Size from = random_size(compared % 2 == 0 ? cv::Size(40, 40) : cv::Size(500, 300));
    const cv::Size to = random_size(from);
    const cv::Mat picture = noise(from, random_);
    if (!can_shrink(picture, to)) continue;
    expect_as_library(picture, to);
    ++compared;
  }
}

TEST_F(Shrinking, MakesThePixelsOfTheLibraryForThePicturesInWindows) {
  const cv::Mat frame = noise({1920, 1080}, random_);
  const cv::Mat infrared = noise({512, 424}, random_);
  for (const cv::Size window :
       {cv::Size(800, 480), cv::Size(1024, 768), cv::Size(1280, 720), cv::Size(1366, 768),
        cv::Size(1440, 810), cv::Size(1440, 900), cv::Size(1600, 900), cv::Size(1680, 1050),
        cv::Size(1920, 1080), cv::Size(1920, 1200), cv::Size(2048, 1152)}) {
    Options options;
    options.width = window.width;
    options.height = window.height;
    const cv::Size preview = dashboard_geometry(options).image_area.size();
    expect_as_library(frame, preview);
    expect_as_library(infrared, {28 * preview.width / 100, 28 * preview.height / 100});
  }
}

TEST_F(Shrinking, MakesThePixelsOfTheLibraryForPartsOfTheFrame) {
  const cv::Mat frame = noise({1920, 1080}, random_);
  for (int i = 0; i < 12; ++i) {
    const cv::Size size(random_.uniform(950, 1920), random_.uniform(500, 1080));
    const cv::Point corner(random_.uniform(0, 1920 - size.width),
                           random_.uniform(0, 1080 - size.height));
    expect_as_library(frame(cv::Rect(corner, size)), {911, 481});
  }
}

TEST_F(Shrinking, KeepsWhiteWhite) {
  const cv::Mat white(424, 512, CV_8UC3, cv::Scalar::all(255));
  for (const cv::Size size : {cv::Size(255, 135), cv::Size(511, 423), cv::Size(97, 31)}) {
    expect_as_library(white, size);
    cv::Mat shrunk(size, CV_8UC3);
    shrink(white, shrunk);
    EXPECT_EQ(cv::norm(shrunk, cv::Mat(size, CV_8UC3, cv::Scalar::all(255)), cv::NORM_INF), 0);
  }
}

TEST_F(Shrinking, MakesTheSamePixelsOnOneThread) {
  const cv::Mat picture = noise({1920, 1080}, random_);
  cv::Mat on_all(481, 911, CV_8UC3);
  cv::Mat on_one(481, 911, CV_8UC3);
  shrink(picture, on_all);
  const int threads = cv::getNumThreads();
  cv::setNumThreads(1);
  shrink(picture, on_one);
  cv::setNumThreads(threads);
  EXPECT_EQ(cv::norm(on_all, on_one, cv::NORM_INF), 0);
}

TEST_F(Shrinking, IsPossibleUpToAFactorOfFourteen) {
  const cv::Mat picture(280, 281, CV_8UC3);
  EXPECT_TRUE(can_shrink(picture, {21, 20}));
  EXPECT_FALSE(can_shrink(picture, {20, 20}));
  EXPECT_FALSE(can_shrink(picture, {21, 19}));
}

TEST(CanShrink, IsFalseWhereTheLibraryHasOtherArithmetic) {
  const cv::Mat picture(100, 100, CV_8UC3);
  EXPECT_FALSE(can_shrink(picture, {50, 25}));
  EXPECT_FALSE(can_shrink(picture, {100, 100}));
  EXPECT_FALSE(can_shrink(picture, {101, 50}));
  EXPECT_FALSE(can_shrink(picture, {50, 101}));
}

TEST(CanShrink, IsFalseForWhatIsNoPictureInColor) {
  EXPECT_FALSE(can_shrink(cv::Mat(100, 100, CV_8UC1), {70, 70}));
  EXPECT_FALSE(can_shrink(cv::Mat(100, 100, CV_8UC4), {70, 70}));
  EXPECT_FALSE(can_shrink(cv::Mat(100, 100, CV_32FC3), {70, 70}));
  EXPECT_FALSE(can_shrink(cv::Mat(), {70, 70}));
  EXPECT_FALSE(can_shrink(cv::Mat(100, 100, CV_8UC3), {}));
}

TEST(CanShrink, IsFalseWhileOptimizedCodeIsOff) {
  const cv::Mat picture(100, 100, CV_8UC3);
  cv::setUseOptimized(false);
  EXPECT_FALSE(can_shrink(picture, {70, 70}));
  cv::setUseOptimized(true);
  EXPECT_EQ(can_shrink(picture, {70, 70}), !shrinking_kernels().empty());
}

}  // namespace
}  // namespace halcyra
