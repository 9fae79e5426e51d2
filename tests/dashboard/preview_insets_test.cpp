#include "dashboard/preview_insets.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "tests/dashboard/expected_drawing.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

// The expected inset; an empty `picture` leaves it dark.
void inset(cv::Mat& canvas, const cv::Rect& rect, const cv::Mat& picture,
           const std::string& label) {
  expected::fill(canvas, rect, {8, 11, 16}, cv::LINE_8);
  if (!picture.empty()) expected::scaled_picture(canvas, rect, picture);
  cv::rectangle(canvas, rect, {52, 64, 80}, 1, cv::LINE_8);
  expected::text(canvas, label, {rect.x + 8, rect.y + 22}, 0.34, {245, 250, 255});
}

struct InsetCase {
  cv::Rect area;
  cv::Rect infrared;
  cv::Rect depth;  // empty when it does not fit
};

class PreviewInsets : public ::testing::TestWithParam<InsetCase> {};

TEST_P(PreviewInsets, AreAtTheRightEdge) {
  const InsetCase& given = GetParam();
  const FontScaleSetting setting(1.1);
  const cv::Mat infrared = expected::picture(512, 424);
  const cv::Mat depth = expected::picture(512, 424).t();
  cv::Mat actual = expected::canvas(1100, 700);
  drawPreviewInsets(actual, given.area, infrared, depth);

  cv::Mat expected = expected::canvas(1100, 700);
  inset(expected, given.infrared, infrared, "LIVE IR");
  if (!given.depth.empty()) inset(expected, given.depth, depth, "LIVE DEPTH");
  EXPECT_TRUE(same_pixels(actual, expected));
}

INSTANTIATE_TEST_SUITE_P(
    Areas, PreviewInsets,
    ::testing::Values(
        // 0.28 of the area
        InsetCase{{10, 20, 1000, 600}, {716, 34, 280, 168}, {716, 212, 280, 168}},
        InsetCase{{33, 138, 911, 414}, {675, 152, 255, 115}, {675, 277, 255, 115}},
        // the smallest sizes
        InsetCase{{24, 102, 450, 218}, {320, 116, 140, 86}, {}},
        InsetCase{{24, 102, 503, 310}, {373, 116, 140, 86}, {373, 212, 140, 86}},  // 140.84 x 86.8
        InsetCase{{24, 102, 504, 311}, {373, 116, 141, 87}, {373, 213, 141, 87}},  // 141.12 x 87.08
        InsetCase{{24, 102, 283, 250}, {153, 116, 140, 86}, {153, 212, 140, 86}},
        InsetCase{{24, 102, 200, 120}, {70, 116, 140, 86}, {}},
        // the depth inset ends 23 and 24 pixels above the end of the area
        InsetCase{{24, 102, 450, 219}, {320, 116, 140, 86}, {}},
        InsetCase{{24, 102, 450, 220}, {320, 116, 140, 86}, {320, 212, 140, 86}}));

TEST(PreviewInsets, AreLeftOutWithoutAnyPicture) {
  cv::Mat canvas = expected::canvas(1100, 700);
  drawPreviewInsets(canvas, {10, 20, 1000, 600}, {}, {});
  EXPECT_TRUE(same_pixels(canvas, expected::canvas(1100, 700)));
}

TEST(PreviewInsets, SayWhichPictureIsMissing) {
  const FontScaleSetting setting(1.0);
  const cv::Mat picture = expected::picture(512, 424);
  const cv::Rect upper(716, 34, 280, 168);
  const cv::Rect lower(716, 212, 280, 168);
  cv::Mat actual = expected::canvas(1100, 700);
  cv::Mat expected = expected::canvas(1100, 700);
  drawPreviewInsets(actual, {10, 20, 1000, 600}, picture, {});
  inset(expected, upper, picture, "LIVE IR");
  inset(expected, lower, {}, "DEPTH UNAVAILABLE");
  EXPECT_TRUE(same_pixels(actual, expected));

  drawPreviewInsets(actual, {10, 20, 1000, 600}, {}, picture);
  inset(expected, upper, {}, "IR UNAVAILABLE");
  inset(expected, lower, picture, "LIVE DEPTH");
  EXPECT_TRUE(same_pixels(actual, expected));
}

}  // namespace
}  // namespace halcyra
