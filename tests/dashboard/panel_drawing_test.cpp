#include "dashboard/panel_drawing.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "dashboard/font_scale.hpp"
#include "tests/dashboard/expected_drawing.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

const cv::Scalar kColor(10, 200, 250);
const cv::Scalar kKeyColor(128, 142, 160);
const cv::Scalar kValueColor(225, 232, 242);
const cv::Scalar kNoticeColor(142, 153, 170);

// Longer than any line.
const std::string kLongText =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcdefghijklmnopqrstuvwxyz";

std::string cut_to(std::size_t characters) { return kLongText.substr(0, characters - 3) + "..."; }

PanelCursor cursor_over(const cv::Rect& content) {
  PanelCursor cursor;
  cursor.panel = content;
  cursor.content = content;
  cursor.y = content.y + 20;
  cursor.line_height = 20;
  return cursor;
}

TEST(FontScale, StartsAtOneAndAQuarter) { EXPECT_EQ(g_font_scale, 1.25); }

struct Stroke {
  double font_scale;
  int asked;
  int drawn;
};

class PutStroke : public ::testing::TestWithParam<Stroke> {};

TEST_P(PutStroke, GrowsWithTheFontScale) {
  const FontScaleSetting setting(GetParam().font_scale);
  cv::Mat actual = expected::canvas(300, 80);
  put(actual, "Halcyra", {20, 50}, 0.6, kColor, GetParam().asked);

  cv::Mat expected = expected::canvas(300, 80);
  cv::putText(expected, "Halcyra", {20, 50}, cv::FONT_HERSHEY_SIMPLEX, 0.6 * GetParam().font_scale,
              kColor, GetParam().drawn, cv::LINE_AA);
  EXPECT_TRUE(same_pixels(actual, expected));
}

INSTANTIATE_TEST_SUITE_P(
    PanelDrawing, PutStroke,
    ::testing::Values(Stroke{0.5, 2, 2}, Stroke{0.9, 2, 2}, Stroke{1.0, 1, 1}, Stroke{1.25, 1, 1},
                      Stroke{1.25, 2, 2}, Stroke{1.35, 2, 2}, Stroke{1.5, 2, 3}, Stroke{1.76, 1, 1},
                      Stroke{1.77, 1, 2}, Stroke{2.4, 1, 2}, Stroke{2.4, 2, 4}, Stroke{2.4, 3, 6},
                      Stroke{2.94, 1, 2}, Stroke{2.95, 1, 3}, Stroke{1.0, 0, 1}, Stroke{2.0, 0, 1},
                      Stroke{1.0, -3, 1}, Stroke{2.0, -3, 1}));

TEST(Put, StartsAtTheBaseline) {
  const FontScaleSetting setting(2.0);
  cv::Mat actual = expected::canvas(200, 100);
  put(actual, "g", {40, 60}, 0.5, kColor, 1);

  cv::Mat expected = expected::canvas(200, 100);
  cv::putText(expected, "g", {40, 60}, cv::FONT_HERSHEY_SIMPLEX, 1.0, kColor, 2, cv::LINE_AA);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST(DrawBox, FillsAndOutlinesSmoothly) {
  cv::Mat actual = expected::canvas(60, 40);
  drawBox(actual, {5, 7, 40, 20}, {22, 28, 38}, {52, 64, 80});

  cv::Mat expected = expected::canvas(60, 40);
  cv::rectangle(expected, cv::Rect(5, 7, 40, 20), {22, 28, 38}, cv::FILLED, cv::LINE_AA);
  cv::rectangle(expected, cv::Rect(5, 7, 40, 20), {52, 64, 80}, 1, cv::LINE_AA);
  EXPECT_TRUE(same_pixels(actual, expected));
}

struct PanelCase {
  double font_scale;
  cv::Rect rect;
  cv::Rect content;
  int line_height;
  int stroke = 1;  // of the title
};

class DrawPanel : public ::testing::TestWithParam<PanelCase> {};

TEST_P(DrawPanel, GivesTheCursorOfTheFirstLine) {
  const PanelCase& given = GetParam();
  const FontScaleSetting setting(given.font_scale);
  cv::Mat canvas = expected::canvas(1100, 700);
  const PanelCursor cursor = drawPanel(canvas, given.rect, "TITLE", 0.4);
  EXPECT_EQ(cursor.panel, given.rect);
  EXPECT_EQ(cursor.content, given.content);
  EXPECT_EQ(cursor.line_height, given.line_height);
  EXPECT_EQ(cursor.y, given.content.y + given.line_height);
  EXPECT_FALSE(cursor.overflow);
}

TEST_P(DrawPanel, DrawsFrameAndTitle) {
  const PanelCase& given = GetParam();
  const FontScaleSetting setting(given.font_scale);
  cv::Mat actual = expected::canvas(1100, 700);
  drawPanel(actual, given.rect, "A TITLE THAT GOES ON", 0.4);

  // The content begins 22 pixels below the top of the title, and the baseline of the title is 17
  // pixels below that top.
  cv::Mat expected = expected::canvas(1100, 700);
  expected::smooth_box(expected, given.rect, {22, 28, 38}, {52, 64, 80});
  expected::text(expected, "A TITLE THAT GOES ON", {given.content.x, given.content.y - 22 + 17},
                 0.4, {222, 230, 240}, given.stroke);
  EXPECT_TRUE(same_pixels(actual, expected));
}

INSTANTIATE_TEST_SUITE_P(
    PanelDrawing, DrawPanel,
    ::testing::Values(
        PanelCase{1.0, {0, 0, 200, 100}, {8, 30, 184, 62}, 18},       // padding 4, raised to 8
        PanelCase{0.5, {37, 21, 200, 242}, {45, 51, 184, 204}, 15},   // 7.0, by the width
        PanelCase{0.83, {37, 21, 500, 243}, {46, 52, 482, 203}, 15},  // 8.505 and 14.94
        PanelCase{0.9, {10, 20, 300, 300}, {21, 53, 278, 256}, 16},   // 10.5 and 16.2
        PanelCase{1.25, {10, 20, 328, 640}, {21, 53, 306, 596}, 23},  // 11.48 and 22.5
        PanelCase{1.2499, {10, 20, 328, 640}, {21, 53, 306, 596}, 22},
        PanelCase{1.35, {10, 20, 640, 386}, {24, 56, 612, 336}, 24},     // 13.51 and 24.3
        PanelCase{2.0, {10, 20, 1000, 600}, {24, 56, 972, 550}, 24, 2},  // 21 and 36
        PanelCase{1.0, {10, 20, 17, 39}, {18, 50, 1, 1}, 18},
        PanelCase{1.0, {10, 20, 9, 5}, {18, 50, 1, 1}, 18}));

TEST(DrawPanel, DoesNotCutTheTitle) {
  const FontScaleSetting setting(1.0);
  cv::Mat actual = expected::canvas(600, 100);
  drawPanel(actual, {10, 10, 60, 80}, kLongText, 0.38);

  cv::Mat expected = expected::canvas(600, 100);
  expected::smooth_box(expected, {10, 10, 60, 80}, {22, 28, 38}, {52, 64, 80});
  expected::text(expected, kLongText, {18, 35}, 0.38, {222, 230, 240});
  EXPECT_TRUE(same_pixels(actual, expected));
}

struct LineCase {
  double font_scale;
  double scale;
  int content_width;
  std::size_t budget;
  int stroke = 1;
};

class DrawTextLine : public ::testing::TestWithParam<LineCase> {};

TEST_P(DrawTextLine, CutsTheTextToItsBudget) {
  const LineCase& given = GetParam();
  const FontScaleSetting setting(given.font_scale);
  cv::Mat actual = expected::canvas(700, 100);
  PanelCursor cursor = cursor_over({15, 10, given.content_width, 80});
  EXPECT_TRUE(drawTextLine(actual, cursor, kLongText, given.scale, kColor, 1));

  cv::Mat expected = expected::canvas(700, 100);
  expected::text(expected, cut_to(given.budget), {15, 30}, given.scale, kColor, given.stroke);
  EXPECT_TRUE(same_pixels(actual, expected));
}

INSTANTIATE_TEST_SUITE_P(PanelDrawing, DrawTextLine,
                         ::testing::Values(LineCase{1.0, 1.0, 109, 9}, LineCase{1.0, 1.0, 110, 10},
                                           LineCase{2.0, 0.5, 111, 10, 2},
                                           LineCase{1.0, 0.3, 119, 19}, LineCase{1.0, 0.3, 120, 20},
                                           LineCase{1.0, 0.3, 48, 8}, LineCase{1.0, 0.3, 20, 8},
                                           LineCase{1.0, 2.0, 150, 8},
                                           LineCase{2.0, 0.3, 400, 60, 2}));

TEST(DrawTextLine, WritesAShortTextWholeAndStepsDown) {
  const FontScaleSetting setting(1.0);
  cv::Mat actual = expected::canvas(300, 100);
  PanelCursor cursor = cursor_over({15, 10, 200, 80});
  cursor.line_height = 17;
  EXPECT_TRUE(drawTextLine(actual, cursor, "one", 0.3, kColor, 1));
  EXPECT_EQ(cursor.y, 47);
  EXPECT_TRUE(drawTextLine(actual, cursor, "two", 0.5, kColor, 3));
  EXPECT_EQ(cursor.y, 64);
  EXPECT_FALSE(cursor.overflow);

  cv::Mat expected = expected::canvas(300, 100);
  expected::text(expected, "one", {15, 30}, 0.3, kColor);
  expected::text(expected, "two", {15, 47}, 0.5, kColor, 3);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST(DrawTextLine, WritesWhenTwoPixelsAreLeftBelowTheBaseline) {
  cv::Mat canvas = expected::canvas(300, 100);
  PanelCursor cursor = cursor_over({15, 10, 200, 80});
  cursor.y = 88;
  EXPECT_TRUE(drawTextLine(canvas, cursor, "last", 0.3, kColor, 1));
  EXPECT_FALSE(cursor.overflow);
  EXPECT_FALSE(same_pixels(canvas, expected::canvas(300, 100)));
}

TEST(DrawTextLine, RefusesEveryLineWhenFewerAreLeft) {
  cv::Mat canvas = expected::canvas(300, 100);
  PanelCursor cursor = cursor_over({15, 10, 200, 80});
  cursor.y = 89;
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(drawTextLine(canvas, cursor, "refused", 0.3, kColor, 1));
    EXPECT_TRUE(cursor.overflow);
    EXPECT_EQ(cursor.y, 89);
  }
  EXPECT_TRUE(same_pixels(canvas, expected::canvas(300, 100)));
}

TEST(DrawTextLine, KeepsTheOverflowOfAnEarlierLine) {
  cv::Mat canvas = expected::canvas(300, 100);
  PanelCursor cursor = cursor_over({15, 10, 200, 80});
  cursor.overflow = true;
  EXPECT_TRUE(drawTextLine(canvas, cursor, "written", 0.3, kColor, 1));
  EXPECT_TRUE(cursor.overflow);
}

struct RowCase {
  int content_width;
  int value_x;
  int column;
  std::size_t key_budget;
  std::size_t value_budget;
};

class DrawKeyValue : public ::testing::TestWithParam<RowCase> {};

TEST_P(DrawKeyValue, PlacesAndCutsKeyAndValue) {
  const RowCase& given = GetParam();
  const FontScaleSetting setting(1.1);
  cv::Mat actual = expected::canvas(700, 100);
  PanelCursor cursor = cursor_over({15, 10, given.content_width, 80});
  drawKeyValue(actual, cursor, kLongText, kLongText, given.value_x);

  cv::Mat expected = expected::canvas(700, 100);
  expected::text(expected, cut_to(given.key_budget), {15, 30}, 0.34, kKeyColor);
  expected::text(expected, cut_to(given.value_budget), {given.column, 30}, 0.34, kValueColor);
  EXPECT_TRUE(same_pixels(actual, expected));
  EXPECT_EQ(cursor.y, 50);
  EXPECT_FALSE(cursor.overflow);
}

INSTANTIATE_TEST_SUITE_P(
    PanelDrawing, DrawKeyValue,
    ::testing::Values(RowCase{300, 0, 153, 18, 23}, RowCase{300, -5, 153, 18, 23},
                      RowCase{150, 0, 107, 12, 8},   // 0.46 of it is 69, raised to 92
                      RowCase{202, 0, 107, 12, 15},  // 92.92
                      RowCase{203, 0, 108, 12, 15},  // 93.38
                      RowCase{300, 1, 1, 6, 44}, RowCase{300, 71, 71, 6, 34},
                      RowCase{300, 72, 72, 7, 34}, RowCase{300, 267, 267, 34, 6},
                      RowCase{300, 266, 266, 34, 7}, RowCase{300, 400, 400, 53, 6}));

TEST(DrawKeyValue, WritesShortTextsWhole) {
  const FontScaleSetting setting(1.0);
  cv::Mat actual = expected::canvas(400, 100);
  PanelCursor cursor = cursor_over({15, 10, 300, 80});
  cursor.y = 88;
  drawKeyValue(actual, cursor, "people", "2", 160);

  cv::Mat expected = expected::canvas(400, 100);
  expected::text(expected, "people", {15, 88}, 0.34, kKeyColor);
  expected::text(expected, "2", {160, 88}, 0.34, kValueColor);
  EXPECT_TRUE(same_pixels(actual, expected));
  EXPECT_FALSE(cursor.overflow);
}

TEST(DrawKeyValue, RefusesARowThatDoesNotFit) {
  cv::Mat canvas = expected::canvas(400, 100);
  PanelCursor cursor = cursor_over({15, 10, 300, 80});
  cursor.y = 89;
  drawKeyValue(canvas, cursor, "people", "2", 160);
  EXPECT_TRUE(cursor.overflow);
  EXPECT_EQ(cursor.y, 89);
  EXPECT_TRUE(same_pixels(canvas, expected::canvas(400, 100)));
}

TEST(DrawOverflowNotice, IsOnTheLastLine) {
  const FontScaleSetting setting(1.1);
  cv::Mat actual = expected::canvas(300, 100);
  PanelCursor cursor = cursor_over({15, 10, 200, 13});
  cursor.overflow = true;
  drawOverflowNotice(actual, cursor);

  cv::Mat expected = expected::canvas(300, 100);
  expected::text(expected, "more in debug mode", {15, 21}, 0.3, kNoticeColor);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST(DrawOverflowNotice, IsLeftOutOfALowPanel) {
  cv::Mat canvas = expected::canvas(300, 100);
  PanelCursor cursor = cursor_over({15, 10, 200, 12});
  cursor.overflow = true;
  drawOverflowNotice(canvas, cursor);
  EXPECT_TRUE(same_pixels(canvas, expected::canvas(300, 100)));
}

TEST(DrawOverflowNotice, IsLeftOutWhenNothingWasRefused) {
  cv::Mat canvas = expected::canvas(300, 100);
  drawOverflowNotice(canvas, cursor_over({15, 10, 200, 80}));
  EXPECT_TRUE(same_pixels(canvas, expected::canvas(300, 100)));
}

}  // namespace
}  // namespace halcyra
