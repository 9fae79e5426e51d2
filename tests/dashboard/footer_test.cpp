#include "dashboard/footer.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "tests/dashboard/dashboard_of.hpp"
#include "tests/dashboard/expected_drawing.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

const std::string kShort =
    "Safety: Tracking and audio direction guide attention only; no owner control.";
const std::string kLong =
    "Safety: Skeleton/audio/face signals guide attention only. Recognition is not security-grade. "
    "Unknown voice may converse, not control.";

struct FooterCase {
  cv::Size canvas;
  double font_scale;
  cv::Rect band;
  double scale;
  std::vector<std::string> lines;
  int stroke = 1;
};

class Footer : public ::testing::TestWithParam<FooterCase> {};

TEST_P(Footer, WritesTheSafetySentenceOnItsBand) {
  const FooterCase& given = GetParam();
  const FontScaleSetting setting(given.font_scale);
  cv::Mat actual = expected::canvas(given.canvas.width, given.canvas.height);
  drawFooter(actual, dashboard_of(given.canvas.width, given.canvas.height));

  cv::Mat expected = expected::canvas(given.canvas.width, given.canvas.height);
  expected::fill(expected, given.band, {34, 31, 20}, cv::LINE_8);
  cv::Point baseline(given.band.x + 10, given.band.y + 19);
  for (const std::string& line : given.lines) {
    expected::text(expected, line, baseline, given.scale, {92, 206, 245}, given.stroke);
    baseline.y += 15;
  }
  EXPECT_TRUE(same_pixels(actual, expected));
}

INSTANTIATE_TEST_SUITE_P(
    Canvases, Footer,
    ::testing::Values(FooterCase{{800, 480}, 0.9, {12, 446, 776, 28}, 0.28, {kShort}},
                      FooterCase{{933, 480}, 0.9, {13, 446, 907, 28}, 0.28, {kShort}},  // 13.995
                      FooterCase{{934, 480}, 0.9, {14, 445, 906, 28}, 0.28, {kShort}},  // 14.01
                      FooterCase{{1149, 619}, 1.0, {17, 579, 1115, 32}, 0.28, {kShort}},
                      FooterCase{{1149, 620}, 1.0, {17, 580, 1115, 32}, 0.34, {kShort}},
                      FooterCase{{1150, 620}, 1.0, {17, 580, 1116, 32}, 0.34, {kLong}},
                      FooterCase{{1440, 810}, 1.1, {21, 758, 1398, 42}, 0.34, {kLong}},
                      FooterCase{{1920, 1080}, 1.35, {28, 1024, 1864, 42}, 0.34, {kLong}}));

// Large text wraps the sentence. A character counts as 3.57 pixels times the font scale, and the
// narrowest canvas with the long sentence has 1096 pixels for its 133 characters. What the line
// budget cuts off lies beyond the edge of the canvas.
const std::string kFirstLine =
    "Safety: Skeleton/audio/face signals guide attention only. Recognition is not security-grade. "
    "Unknown voice may converse, not";

INSTANTIATE_TEST_SUITE_P(
    LargeText, Footer,
    ::testing::Values(
        FooterCase{{1150, 800}, 2.308, {17, 751, 1116, 41}, 0.34, {kLong}, 2},  // 133.02
        FooterCase{{1150, 800}, 2.309, {17, 751, 1116, 41}, 0.34, {kFirstLine, "control."}, 2},
        FooterCase{{1150, 770}, 2.4, {17, 722, 1116, 40}, 0.34, {kFirstLine, "control."}, 2},
        FooterCase{{1150, 769}, 2.4, {17, 722, 1116, 39}, 0.34, {kFirstLine}, 2},
        FooterCase{{1150, 619}, 2.4, {17, 579, 1116, 32}, 0.28, {kLong}, 2}));  // 155 characters

}  // namespace
}  // namespace halcyra
