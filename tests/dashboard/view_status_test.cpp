#include "dashboard/view_status.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "tests/dashboard/expected_drawing.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

const cv::Scalar kColor(96, 110, 130);
const cv::Scalar kDetailColor(170, 182, 198);

// Where heading and detail of a card are, counted from its top left corner.
struct Layout {
  cv::Size size;
  int left;
  int baseline;
  double heading_scale;
  double detail_scale;
  int line_step;
};

class ViewStatusLayout : public ::testing::TestWithParam<Layout> {};

TEST_P(ViewStatusLayout, PlacesHeadingAndDetail) {
  const Layout& layout = GetParam();
  const FontScaleSetting setting(1.1);
  const cv::Rect card(cv::Point(20, 30), layout.size);
  cv::Mat actual = expected::canvas(1000, 500);
  drawViewStatus(actual, card, "CURRENT VIEW: DEPTH", std::string(90, 'a') + " waiting", kColor);

  const int left = 20 + layout.left;
  const int baseline = 30 + layout.baseline;
  cv::Mat expected = expected::canvas(1000, 500);
  expected::fill(expected, card, {8, 11, 16}, cv::LINE_AA);
  expected::text(expected, "CURRENT VIEW: DEPTH", {left, baseline}, layout.heading_scale, kColor,
                 2);
  expected::text(expected, std::string(90, 'a'), {left, baseline + 34}, layout.detail_scale,
                 kDetailColor);
  expected::text(expected, "waiting", {left, baseline + 34 + layout.line_step}, layout.detail_scale,
                 kDetailColor);
  EXPECT_TRUE(same_pixels(actual, expected));
}

INSTANTIATE_TEST_SUITE_P(Sizes, ViewStatusLayout,
                         ::testing::Values(Layout{{341, 164}, 18, 54, 0.58, 0.34, 19},
                                           Layout{{341, 165}, 18, 55, 0.58, 0.34, 19},
                                           Layout{{342, 300}, 19, 100, 0.58, 0.34, 19},
                                           Layout{{450, 329}, 25, 109, 0.58, 0.34, 19},
                                           Layout{{450, 330}, 25, 110, 0.82, 0.42, 23},
                                           Layout{{911, 400}, 50, 133, 0.82, 0.42, 23}));

struct Wrapping {
  int width;
  std::string detail;
  std::vector<std::string> lines;
};

class ViewStatusWrapping : public ::testing::TestWithParam<Wrapping> {};

TEST_P(ViewStatusWrapping, FollowsTheWidth) {
  const FontScaleSetting setting(1.0);
  const cv::Rect card(20, 30, GetParam().width, 164);
  cv::Mat actual = expected::canvas(600, 300);
  drawViewStatus(actual, card, "", GetParam().detail, kColor);

  cv::Mat expected = expected::canvas(600, 300);
  expected::fill(expected, card, {8, 11, 16}, cv::LINE_AA);
  int y = 30 + 54 + 34;
  for (const std::string& line : GetParam().lines) {
    expected::text(expected, line, {38, y}, 0.34, kDetailColor);
    y += 19;
  }
  EXPECT_TRUE(same_pixels(actual, expected));
}

INSTANTIATE_TEST_SUITE_P(
    Widths, ViewStatusWrapping,
    ::testing::Values(
        Wrapping{100, "twenty characters ok abc", {"twenty characters ok abc"}},
        Wrapping{100, "twenty characters ok abcd", {"twenty characters ok", "abcd"}},
        Wrapping{274, "twenty characters ok abcd", {"twenty characters ok", "abcd"}},  // 24.9
        Wrapping{275, "twenty characters ok abcd", {"twenty characters ok abcd"}}));

// How many lines a card of this height shows of a detail that has more than fit, one word per line.
std::size_t lines_on_card(int height, int heading_baseline) {
  const FontScaleSetting setting(1.0);
  const cv::Rect card(0, 0, 200, height);
  const std::string word = "a-word-as-long-as-a-line";
  std::string detail;
  for (int i = 0; i < 20; ++i) detail += word + " ";
  cv::Mat actual = expected::canvas(400, 400);
  drawViewStatus(actual, card, "", detail, kColor);

  cv::Mat expected = expected::canvas(400, 400);
  expected::fill(expected, card, {8, 11, 16}, cv::LINE_AA);
  std::size_t lines = 0;
  while (!same_pixels(actual, expected) && lines < 20) {
    const int y = heading_baseline + 34 + 19 * static_cast<int>(lines);
    expected::text(expected, word, {18, y}, 0.34, kDetailColor);
    ++lines;
  }
  return lines;
}

TEST(ViewStatus, EndsWhereTheNextLineWouldReachTheBottomMargin) {
  EXPECT_EQ(lines_on_card(128, 54), 1U);  // the second would be at 107 = 128 - 21
  EXPECT_EQ(lines_on_card(129, 54), 2U);
  EXPECT_EQ(lines_on_card(147, 54), 2U);  // the third at 126 = 147 - 21
  EXPECT_EQ(lines_on_card(148, 54), 3U);
  EXPECT_EQ(lines_on_card(300, 100), 8U);  // from 134 to 267, the ninth would be at 286
}

TEST(ViewStatus, NeedsNoDetail) {
  cv::Mat actual = expected::canvas(400, 200);
  drawViewStatus(actual, {10, 10, 300, 150}, "CURRENT VIEW: IR", " \n", kColor);

  cv::Mat expected = expected::canvas(400, 200);
  expected::fill(expected, {10, 10, 300, 150}, {8, 11, 16}, cv::LINE_AA);
  expected::text(expected, "CURRENT VIEW: IR", {28, 64}, 0.58, kColor, 2);
  EXPECT_TRUE(same_pixels(actual, expected));
}

}  // namespace
}  // namespace halcyra
