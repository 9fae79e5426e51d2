#include "dashboard/kept_text.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

constexpr int kTimes = 4;  // new, drawn again, and copied twice

cv::Mat with_library_text(const cv::Mat& ground, const std::string& text, cv::Point origin,
                          double scale, const cv::Scalar& color) {
  cv::Mat canvas = ground.clone();
  cv::putText(canvas, text, origin, cv::FONT_HERSHEY_SIMPLEX, scale, color, 1, cv::LINE_AA);
  return canvas;
}

void expect_as_library(const cv::Mat& ground, const std::string& text, cv::Point origin,
                       double scale, const cv::Scalar& color) {
  cv::Mat canvas = ground.clone();
  drawThinText(canvas, text, origin, scale, color);
  EXPECT_TRUE(same_pixels(canvas, with_library_text(ground, text, origin, scale, color)))
      << '"' << text << "\" at " << origin << ", scale " << scale;
}

class KeptTextTest : public ::testing::Test {
 protected:
  std::string random_text() {
    std::string text;
    const int length = random_.uniform(0, 30);
    for (int i = 0; i < length; ++i) text += static_cast<char>(random_.uniform(32, 127));
    return text;
  }

  cv::Scalar random_color() {
    return {static_cast<double>(random_.uniform(0, 256)),
            static_cast<double>(random_.uniform(0, 256)),
            static_cast<double>(random_.uniform(0, 256))};
  }

  cv::Point anywhere(cv::Size size) {
    return {random_.uniform(-30, size.width + 30), random_.uniform(-30, size.height + 30)};
  }

  const cv::Size size_{320, 90};
  cv::RNG random_{5};
};

TEST_F(KeptTextTest, IsThatOfTheLibraryOnOneColor) {
  for (int i = 0; i < 150; ++i) {
    const cv::Mat ground(size_, CV_8UC3, random_color());
    const std::string text = random_text();
    const cv::Scalar color = random_color();
    const double scale = random_.uniform(0.2, 1.2);
    for (int time = 0; time < kTimes; ++time) {
      expect_as_library(ground, text, anywhere(size_), scale, color);
    }
  }
}

TEST_F(KeptTextTest, IsThatOfTheLibraryAtTheEdgesOfTheCanvas) {
  const cv::Mat ground(60, 60, CV_8UC3, cv::Scalar(20, 40, 60));
  const cv::Scalar color(200, 220, 240);
  for (int x = -12; x < 60; ++x) {
    expect_as_library(ground, "Wj", {x, 30}, 0.5, color);
    expect_as_library(ground, "Wj", {20, x + 6}, 0.5, color);
  }
}

// Copying over another text would take that away.
TEST_F(KeptTextTest, LeavesWhatIsBelow) {
  const cv::Scalar color(200, 220, 240);
  cv::Mat ground(size_, CV_8UC3, cv::Scalar(20, 40, 60));
  for (int time = 0; time < kTimes; ++time)
    expect_as_library(ground, "above", {40, 40}, 0.5, color);
  for (int x = 36; x < 90; ++x) {
    cv::Mat marked = ground.clone();
    marked.at<cv::Vec3b>(36, x) = {0, 0, 255};
    expect_as_library(marked, "above", {40, 40}, 0.5, color);
  }
  random_.fill(ground, cv::RNG::UNIFORM, 0, 256);
  expect_as_library(ground, "above", {40, 40}, 0.5, color);
}

// `ground` with `other` from one row or column on, or up to it.
cv::Mat with_other_side(const cv::Mat& ground, int side, int distance, cv::Rect box,
                        const cv::Scalar& other) {
  cv::Mat picture = ground.clone();
  const int left = box.x - distance;
  const int top = box.y - distance;
  const int right = box.br().x + distance;
  const int bottom = box.br().y + distance;
  const cv::Rect sides[] = {{0, 0, left, picture.rows},
                            {0, 0, picture.cols, top},
                            {right, 0, picture.cols - right, picture.rows},
                            {0, bottom, picture.cols, picture.rows - bottom}};
  picture(sides[side]).setTo(other);
  return picture;
}

cv::Rect box_of_difference(const cv::Mat& a, const cv::Mat& b) {
  cv::Mat difference;
  cv::absdiff(a, b, difference);
  cv::Mat any;
  cv::inRange(difference, cv::Scalar::all(0), cv::Scalar::all(0), any);
  return cv::boundingRect(any == 0);
}

// The faint edge of a line may change that colour, and not the one under the text.
TEST_F(KeptTextTest, IsThatOfTheLibraryBesideAnotherColor) {
  const cv::Point origin(60, 50);
  for (int i = 0; i < 200; ++i) {
    const cv::Mat ground(size_, CV_8UC3, random_color());
    const std::string text = "I" + random_text().substr(0, 12);
    const cv::Scalar color = random_color();
    const double scale = random_.uniform(0.3, 0.8);
    for (int time = 0; time < 3; ++time) expect_as_library(ground, text, origin, scale, color);
    const cv::Rect box =
        box_of_difference(ground, with_library_text(ground, text, origin, scale, color));
    for (int side = 0; side < 4; ++side) {
      for (int distance = 0; distance < 6; ++distance) {
        const cv::Mat beside =
            with_other_side(ground, side, distance, box, cv::Scalar::all(255 * (i % 2)));
        expect_as_library(beside, text, origin, scale, color);
      }
    }
  }
}

TEST_F(KeptTextTest, IsToldFromOtherTexts) {
  const cv::Mat dark(size_, CV_8UC3, cv::Scalar(20, 40, 60));
  const cv::Mat bright(size_, CV_8UC3, cv::Scalar(120, 140, 160));
  for (int time = 0; time < kTimes; ++time) {
    for (const cv::Mat& ground : {dark, bright}) {
      for (const double scale : {0.4, 0.41}) {
        for (const cv::Scalar& color : {cv::Scalar(200, 220, 240), cv::Scalar(200, 220, 241)}) {
          expect_as_library(ground, "one", {40, 40}, scale, color);
          expect_as_library(ground, "two", {40, 40}, scale, color);
        }
      }
    }
  }
}

TEST_F(KeptTextTest, InItsGroundsOwnColorIsNotSeen) {
  const cv::Scalar color(20, 40, 60);
  const cv::Mat ground(size_, CV_8UC3, color);
  for (int time = 0; time < kTimes; ++time) {
    expect_as_library(ground, "unseen", {40, 40}, 0.5, color);
    expect_as_library(ground, "", {40, 40}, 0.5, color);
  }
}

// More than the 8 MB that are kept.
TEST_F(KeptTextTest, IsThatOfTheLibraryAfterManyOthers) {
  const cv::Mat ground(200, 2000, CV_8UC3, cv::Scalar(20, 40, 60));
  const cv::Scalar color(200, 220, 240);
  for (int i = 0; i < 60; ++i) {
    cv::Mat canvas = ground.clone();
    for (int time = 0; time < 2; ++time) {
      drawThinText(canvas, std::to_string(i) + " of many large texts", {20, 100}, 2.5, color);
    }
    if (i % 10 == 0) expect_as_library(ground, "0 of many large texts", {30, 90}, 2.5, color);
  }
}

}  // namespace
}  // namespace halcyra
