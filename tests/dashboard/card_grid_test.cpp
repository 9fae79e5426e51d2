#include "dashboard/card_grid.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "tests/dashboard/expected_drawing.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

const cv::Scalar kGreen(80, 210, 120);
const cv::Scalar kRed(90, 95, 245);
const cv::Scalar kTitleColor(230, 236, 244);
const cv::Scalar kDetailColor(184, 194, 208);
const cv::Scalar kImpactColor(142, 153, 170);

constexpr int kMargin = 20;
constexpr int kTop = 10;

// A band of cards; `below` pixels below it are free for cards too.
DashboardGeometry band_of(int width, int height, int below = 0) {
  DashboardGeometry geometry = {};
  geometry.margin = kMargin;
  geometry.preview_width = width;
  geometry.events_top = kTop;
  geometry.events_height = height;
  geometry.bottom = kTop + height + below;
  return geometry;
}

// A band for 3 columns and 3 rows of cards of exactly this size.
DashboardGeometry band_for_card(int width, int height) {
  return band_of(3 * width + 16, 3 * height + 16);
}

cv::Mat canvas() { return expected::canvas(1400, 560); }

// Nine cards; all but the first have no text.
cv::Mat drawn(const DashboardGeometry& geometry, const StatusCard& first = {}) {
  const FontScaleSetting setting(1.1);
  std::vector<StatusCard> cards(9);
  cards[0] = first;
  cv::Mat actual = canvas();
  drawCardGrid(actual, geometry, cards);
  return actual;
}

enum class Form { kCompact, kFull };

// Frame and dot of a card.
void card_frame(cv::Mat& canvas, const cv::Rect& rect, Form form, const cv::Scalar& state_color) {
  const bool compact = form == Form::kCompact;
  expected::smooth_box(canvas, rect, {29, 35, 45}, {52, 62, 76});
  cv::circle(canvas, {rect.x + 14, rect.y + (compact ? 19 : 23)}, compact ? 4 : 6, state_color,
             cv::FILLED, cv::LINE_AA);
}

// A card without texts. A full one still shows the word before its impact.
void empty_card(cv::Mat& canvas, const cv::Rect& rect, Form form) {
  card_frame(canvas, rect, form, kRed);
  if (form == Form::kCompact) return;
  expected::text(canvas, "Impact:", {rect.x + 14, rect.y + 52}, 0.34, kImpactColor);
}

cv::Rect place(int column, int row, cv::Size card) {
  return {{kMargin + column * (card.width + 8), kTop + row * (card.height + 8)}, card};
}

cv::Mat canvas_with_first_card(cv::Size card, Form form, const cv::Scalar& state_color) {
  cv::Mat grid = canvas();
  card_frame(grid, place(0, 0, card), form, state_color);
  return grid;
}

// The cards after the first one. They cover text that sticks out of it.
void other_cards(cv::Mat& canvas, cv::Size card, Form form) {
  for (int i = 1; i < 9; ++i) empty_card(canvas, place(i % 3, i / 3, card), form);
}

struct GridCase {
  cv::Size band;
  int below;
  int columns;
  cv::Size card;
  std::vector<int> row_heights;
  Form form = Form::kCompact;
};

class CardGrid : public ::testing::TestWithParam<GridCase> {};

TEST_P(CardGrid, FillsTheBandRowByRow) {
  const GridCase& given = GetParam();
  const FontScaleSetting setting(1.1);
  cv::Mat expected = canvas();
  const int count = std::min(9, given.columns * static_cast<int>(given.row_heights.size()));
  for (int i = 0; i < count; ++i) {
    const int row = i / given.columns;
    cv::Rect card = place(i % given.columns, row, given.card);
    card.height = given.row_heights[static_cast<std::size_t>(row)];
    empty_card(expected, card, given.form);
  }
  const DashboardGeometry band = band_of(given.band.width, given.band.height, given.below);
  EXPECT_TRUE(same_pixels(drawn(band), expected));
}

INSTANTIATE_TEST_SUITE_P(
    Bands, CardGrid,
    ::testing::Values(
        GridCase{{429, 166}, 0, 2, {210, 26}, {26, 26, 26, 26, 26}},
        GridCase{{430, 166}, 0, 3, {138, 50}, {50, 50, 50}},
        GridCase{{474, 98}, 0, 3, {152, 27}, {27, 27, 27}},
        GridCase{{935, 166}, 0, 3, {306, 50}, {50, 50, 50}},
        GridCase{{1341, 442}, 0, 3, {441, 142}, {142, 142, 142}, Form::kFull},
        // A fourth row of at least 24 would begin at 106; the band ends at 124, 125, 126 and 129.
        GridCase{{429, 114}, 0, 2, {210, 24}, {24, 24, 24}},
        GridCase{{429, 115}, 0, 2, {210, 24}, {24, 24, 24}},
        GridCase{{429, 116}, 0, 2, {210, 24}, {24, 24, 24, 20}},
        GridCase{{429, 114}, 5, 2, {210, 24}, {24, 24, 24, 23}},
        GridCase{{200, 400}, 0, 2, {110, 73}, {73, 73, 73, 73, 73}},
        GridCase{{228, 400}, 0, 2, {110, 73}, {73, 73, 73, 73, 73}},
        GridCase{{230, 400}, 0, 2, {111, 73}, {73, 73, 73, 73, 73}}));

using Lines = std::vector<std::string>;

const StatusCard kTalkative = {"Skeleton Tracking and more", "unavailable now",
                               "one two three four five six seven eight nine ten eleven twelve",
                               "Control Center uses face fallback for room awareness.",
                               "never drawn"};

struct CompactCase {
  cv::Size card;
  int state_x;  // from the card's left edge
  Lines detail;
};

class CompactCard : public ::testing::TestWithParam<CompactCase> {};

TEST_P(CompactCard, WritesHeadAndDetail) {
  const CompactCase& given = GetParam();
  cv::Mat expected = canvas_with_first_card(given.card, Form::kCompact, kRed);
  const FontScaleSetting setting(1.1);
  expected::text(expected, "Skeleton Tracki...", {44, 34}, 0.36, kTitleColor);
  expected::text(expected, "unavaila...", {20 + given.state_x, 34}, 0.34, kRed);
  int y = 10 + 43;
  for (const std::string& line : given.detail) {
    expected::text(expected, line, {32, y}, 0.3, kDetailColor);
    y += 15;
  }
  other_cards(expected, given.card, Form::kCompact);
  const DashboardGeometry band = band_for_card(given.card.width, given.card.height);
  EXPECT_TRUE(same_pixels(drawn(band, kTalkative), expected));
}

INSTANTIATE_TEST_SUITE_P(
    Cards, CompactCard,
    ::testing::Values(
        CompactCase{{152, 27}, 92, {"one two three four"}},
        CompactCase{{178, 77}, 92, {"one two three four"}},
        CompactCase{{179, 78}, 93, {"one two three four", "five six seven"}},
        CompactCase{{298, 85}, 212, {"one two three four", "five six seven eight"}},       // 22
        CompactCase{{299, 85}, 213, {"one two three four five", "six seven eight nine"}},  // 23
        CompactCase{{229, 92}, 143, {"one two three four", "five six seven"}},
        CompactCase{{229, 93}, 143, {"one two three four", "five six seven", "eight nine ten"}},
        CompactCase{{229, 200},
                    143,
                    {"one two three four", "five six seven", "eight nine ten", "eleven twelve"}}));

struct FullCase {
  cv::Size card;
  int state_x;  // from the card's left edge
  std::string detail;
  Lines detail_lines;
  int impact_y;  // from the card's top edge
  Lines impact_lines;
};

class FullCard : public ::testing::TestWithParam<FullCase> {};

TEST_P(FullCard, WritesHeadDetailAndImpact) {
  const FullCase& given = GetParam();
  cv::Mat expected = canvas_with_first_card(given.card, Form::kFull, kRed);
  const FontScaleSetting setting(1.1);
  expected::text(expected, "Skeleton Tracking and...", {54, 38}, 0.48, kTitleColor);
  expected::text(expected, "unavaila...", {20 + given.state_x, 38}, 0.46, kRed);
  int y = 10 + 52;
  for (const std::string& line : given.detail_lines) {
    expected::text(expected, line, {32, y}, 0.36, kDetailColor);
    y += 17;
  }
  y = 10 + given.impact_y;
  for (const std::string& line : given.impact_lines) {
    expected::text(expected, line, {34, y}, 0.34, kImpactColor);
    y += 16;
  }
  StatusCard card = kTalkative;
  card.detail = given.detail;
  other_cards(expected, given.card, Form::kFull);
  const DashboardGeometry band = band_for_card(given.card.width, given.card.height);
  EXPECT_TRUE(same_pixels(drawn(band, card), expected));
}

const Lines kDetailLines = {"one two three four", "five six seven eight", "nine ten eleven",
                            "twelve"};  // of 20 characters
const Lines kImpactLines = {"Impact: Control Center", "uses face fallback for",
                            "room awareness."};  // of 22 characters

Lines first_of(const Lines& lines, std::ptrdiff_t count) {
  return {lines.begin(), lines.begin() + count};
}

// The impact is left out when its first baseline is 32 pixels or less above the bottom of the card.
INSTANTIATE_TEST_SUITE_P(
    Cards, FullCard,
    ::testing::Values(
        FullCase{{230, 86}, 126, kTalkative.detail, first_of(kDetailLines, 1), 0, {}},
        FullCase{{230, 91}, 126, kTalkative.detail, first_of(kDetailLines, 1), 0, {}},
        FullCase{{230, 92}, 126, kTalkative.detail, first_of(kDetailLines, 2), 0, {}},
        FullCase{{230, 109}, 126, kTalkative.detail, first_of(kDetailLines, 3), 0, {}},
        FullCase{{230, 101}, 126, "brief", {"brief"}, 0, {}},
        FullCase{{230, 102}, 126, "brief", {"brief"}, 69, first_of(kImpactLines, 2)},
        FullCase{{230, 152}, 126, kTalkative.detail, kDetailLines, 0, {}},
        FullCase{{230, 153}, 126, kTalkative.detail, kDetailLines, 120, first_of(kImpactLines, 2)},
        FullCase{{230, 166}, 126, kTalkative.detail, kDetailLines, 120, first_of(kImpactLines, 2)},
        FullCase{{230, 167}, 126, kTalkative.detail, kDetailLines, 120, kImpactLines},
        FullCase{{400, 120},
                 296,
                 kTalkative.detail,
                 {"one two three four five six seven", "eight nine ten eleven twelve"},
                 86,
                 {"Impact: Control Center uses face", "fallback for room awareness."}}));

TEST(Card, CutsAWordThatIsLongerThanItsLine) {
  StatusCard card;
  card.detail = std::string(22, 'm') + " " + std::string(23, 'n');
  cv::Mat expected = canvas_with_first_card({179, 78}, Form::kCompact, kRed);
  const FontScaleSetting setting(1.1);
  expected::text(expected, std::string(22, 'm'), {32, 53}, 0.3, kDetailColor);
  expected::text(expected, std::string(19, 'n') + "...", {32, 68}, 0.3, kDetailColor);
  other_cards(expected, {179, 78}, Form::kCompact);
  EXPECT_TRUE(same_pixels(drawn(band_for_card(179, 78), card), expected));
}

TEST(Card, GivesTheImpactTwoCharactersMoreThanTheDetail) {
  // The detail of a card of this width has 20 characters a line.
  const std::vector<std::pair<std::string, Lines>> impacts = {
      {"fourteen-chars", {"Impact: fourteen-chars"}},
      {"fifteen-letters", {"Impact:", "fifteen-letters"}}};
  for (const auto& [impact, lines] : impacts) {
    StatusCard card;
    card.impact = impact;
    cv::Mat expected = canvas_with_first_card({230, 153}, Form::kFull, kRed);
    const FontScaleSetting setting(1.1);
    int y = 62;
    for (const std::string& line : lines) {
      expected::text(expected, line, {34, y}, 0.34, kImpactColor);
      y += 16;
    }
    other_cards(expected, {230, 153}, Form::kFull);
    EXPECT_TRUE(same_pixels(drawn(band_for_card(230, 153), card), expected)) << impact;
  }
}

TEST(Card, ShowsItsStateInColour) {
  StatusCard card;
  card.state = "OK";
  cv::Mat expected = canvas_with_first_card({152, 27}, Form::kCompact, kGreen);
  const FontScaleSetting setting(1.1);
  expected::text(expected, "OK", {112, 34}, 0.34, kGreen);
  other_cards(expected, {152, 27}, Form::kCompact);
  EXPECT_TRUE(same_pixels(drawn(band_for_card(152, 27), card), expected));
}

TEST(Card, DoesNotCutWordsThatJustFit) {
  StatusCard card;
  card.title = "eighteen charac...";
  card.state = "unavailable";
  cv::Mat expected = canvas_with_first_card({152, 27}, Form::kCompact, kRed);
  const FontScaleSetting setting(1.1);
  expected::text(expected, "eighteen charac...", {44, 34}, 0.36, kTitleColor);
  expected::text(expected, "unavailable", {112, 34}, 0.34, kRed);
  other_cards(expected, {152, 27}, Form::kCompact);
  EXPECT_TRUE(same_pixels(drawn(band_for_card(152, 27), card), expected));
}

TEST(Card, IsCompactInALowLastRowOnly) {
  // Rows of 100 pixels, the third cut to 85 by the bottom.
  DashboardGeometry band = band_for_card(240, 100);
  band.bottom = kTop + 2 * 108 + 85;
  cv::Mat expected = canvas();
  const FontScaleSetting setting(1.1);
  for (int i = 0; i < 9; ++i) {
    cv::Rect card = place(i % 3, i / 3, {240, 100});
    if (i < 6) {
      empty_card(expected, card, Form::kFull);
    } else {
      card.height = 85;
      empty_card(expected, card, Form::kCompact);
    }
  }
  EXPECT_TRUE(same_pixels(drawn(band), expected));
}

}  // namespace
}  // namespace halcyra
