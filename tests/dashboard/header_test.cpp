#include "dashboard/header.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "tests/dashboard/dashboard_of.hpp"
#include "tests/dashboard/expected_drawing.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

const cv::Scalar kTitleColor(238, 244, 252);
const cv::Scalar kSubtitleColor(134, 148, 167);
const cv::Scalar kHintColor(150, 162, 180);

constexpr int kHeight = 100;  // more than the header ever fills

cv::Mat drawn_header(int width, int height) {
  cv::Mat canvas = expected::canvas(width, kHeight);
  drawHeader(canvas, dashboard_of(width, height));
  return canvas;
}

struct HeaderCase {
  cv::Size canvas;
  int height;
  cv::Point title;
  double title_scale;
  cv::Point hints;
};

cv::Mat expected_band(const HeaderCase& given) {
  cv::Mat canvas = expected::canvas(given.canvas.width, kHeight);
  expected::fill(canvas, {0, 0, given.canvas.width, given.height}, {20, 26, 36}, cv::LINE_8);
  expected::text(canvas, "Halcyra Control Center", given.title, given.title_scale, kTitleColor, 2);
  return canvas;
}

class WideHeader : public ::testing::TestWithParam<HeaderCase> {};

TEST_P(WideHeader, ShowsTitleSubtitleAndAllKeys) {
  const HeaderCase& given = GetParam();
  const FontScaleSetting setting(1.1);
  cv::Mat expected = expected_band(given);
  expected::text(expected, "skeleton-first room awareness", {given.title.x + 405, given.hints.y},
                 0.38, kSubtitleColor);
  expected::text(
      expected,
      "1 RGB  2 IR  3 Depth  4 Skeletal  5 Combo  6 Room  7 Follow  M mic  B debug  Q quit",
      given.hints, 0.31, kHintColor);
  EXPECT_TRUE(same_pixels(drawn_header(given.canvas.width, given.canvas.height), expected));
}

INSTANTIATE_TEST_SUITE_P(Header, WideHeader,
                         ::testing::Values(HeaderCase{{1120, 620}, 52, {16, 38}, 0.82, {681, 36}},
                                           HeaderCase{{1120, 619}, 52, {16, 38}, 0.54, {681, 36}},
                                           HeaderCase{{1415, 700}, 59, {21, 41}, 0.82, {686, 39}},
                                           HeaderCase{{1417, 700}, 59, {21, 41}, 0.82, {687, 39}},
                                           HeaderCase{{1440, 810}, 68, {21, 46}, 0.82, {710, 44}},
                                           HeaderCase{
                                               {1920, 1080}, 76, {28, 50}, 0.82, {1190, 48}}));

class NarrowHeader : public ::testing::TestWithParam<HeaderCase> {};

TEST_P(NarrowHeader, ShowsTitleAndTheMainKeys) {
  const HeaderCase& given = GetParam();
  const FontScaleSetting setting(0.9);
  cv::Mat expected = expected_band(given);
  expected::text(expected, "1 RGB 2 IR 3 Depth 4 Skeletal 5 Combo 6 Room 7 Follow  M mic B debug",
                 given.hints, 0.28, kHintColor);
  EXPECT_TRUE(same_pixels(drawn_header(given.canvas.width, given.canvas.height), expected));
}

INSTANTIATE_TEST_SUITE_P(Header, NarrowHeader,
                         ::testing::Values(HeaderCase{{800, 480}, 48, {12, 36}, 0.54, {12, 40}},
                                           HeaderCase{{1119, 619}, 52, {16, 38}, 0.54, {16, 44}},
                                           HeaderCase{{1119, 620}, 52, {16, 38}, 0.82, {16, 44}}));

}  // namespace
}  // namespace halcyra
