#include "enroll/fitted_text.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

namespace halcyra {
namespace {

constexpr char kLongest[] = "Turn your head until the camera sees your right cheek";

std::string joined(const FittedText& text) {
  std::string words;
  for (const std::string& line : text.lines) words += (words.empty() ? "" : " ") + line;
  return words;
}

// The rectangle around everything that was drawn on black.
cv::Rect drawn(const cv::Mat& canvas) {
  cv::Mat grey;
  cv::cvtColor(canvas, grey, cv::COLOR_BGR2GRAY);
  return cv::boundingRect(grey);
}

// Draws into a part of a larger canvas, so that what leaves the part is seen.
cv::Rect drawn_in(const cv::Rect& room, const std::string& text, int cap_height) {
  cv::Mat canvas(room.height + 400, room.width + 400, CV_8UC3, cv::Scalar());
  drawFittedText(canvas, text, {200, 200, room.width, room.height}, cap_height,
                 cv::Scalar::all(255));
  return drawn(canvas) - cv::Point(200, 200);
}

TEST(FittedText, KeepsToTheRoom) {
  for (const cv::Size room : {cv::Size(780, 70), cv::Size(1400, 120), cv::Size(3800, 340)}) {
    for (const std::string text : {"Done", "Only one person, please", kLongest}) {
      SCOPED_TRACE(text + " in " + std::to_string(room.width));
      const cv::Rect ink = drawn_in({cv::Point(), room}, text, room.height / 2);
      EXPECT_EQ(ink & cv::Rect(cv::Point(), room), ink) << ink;
      EXPECT_FALSE(ink.empty());
    }
  }
}

TEST(FittedText, LosesNoWord) {
  for (int width = 100; width < 2000; width += 37) {
    EXPECT_EQ(joined(fit_text(kLongest, {width, 90}, 45)), kLongest) << width;
  }
}

TEST(FittedText, IsAsLargeAsWantedWhereThereIsRoom) {
  const cv::Rect ink = drawn_in({0, 0, 2000, 200}, "Done", 100);
  EXPECT_NEAR(ink.height, 100, 15);  // and the stroke
}

TEST(FittedText, GrowsWithTheRoom) {
  const double small = fit_text(kLongest, {780, 70}, 35).scale;
  const double large = fit_text(kLongest, {1560, 140}, 70).scale;
  EXPECT_GT(large, 1.8 * small);
}

TEST(FittedText, HasLinesOfAboutOneLength) {
  const FittedText text = fit_text(kLongest, {780, 90}, 45);
  ASSERT_EQ(text.lines.size(), 2U);
  EXPECT_LT(std::max(text.lines[0].size(), text.lines[1].size()),
            std::min(text.lines[0].size(), text.lines[1].size()) + 8);
}

TEST(FittedText, BreaksAWordThatCannotBeShrunkFurther) {
  const std::string path(300, 'x');
  const cv::Rect ink = drawn_in({0, 0, 400, 200}, path, 40);
  EXPECT_LE(ink.width, 400);
  EXPECT_GT(fit_text(path, {400, 200}, 40).lines.size(), 1U);
}

TEST(FittedText, EndsWhereThereIsNoRoom) {
  EXPECT_GT(fit_text(kLongest, {0, 0}, 20).lines.size(), 0U);
  EXPECT_TRUE(fit_text("", {100, 100}, 20).lines.empty());
}

TEST(LineOfText, ShrinksToItsWidth) {
  for (const int width : {60, 200, 2000}) {
    cv::Mat canvas(100, 2400, CV_8UC3, cv::Scalar());
    drawLineOfText(canvas, "almost the same", {10, 10, width, 60}, 30, cv::Scalar::all(255));
    const cv::Rect ink = drawn(canvas);
    // Smooth edges reach a pixel further.
    EXPECT_LE(ink.br().x, 10 + width + 1) << width;
    EXPECT_GE(ink.x, 10 - 1);
    EXPECT_GT(ink.width, std::min(width, 200) / 2);
  }
}

}  // namespace
}  // namespace halcyra
