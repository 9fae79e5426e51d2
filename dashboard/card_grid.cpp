#include "dashboard/card_grid.hpp"

#include <algorithm>
#include <string>

#include <opencv2/imgproc.hpp>

#include "dashboard/palette.hpp"
#include "dashboard/panel_drawing.hpp"
#include "dashboard/status_colors.hpp"
#include "dashboard/text_cut.hpp"

namespace halcyra {
namespace {

constexpr int kSpacing = 8;  // between cards
constexpr int kLeastCardWidth = 110;
constexpr int kLeastCardHeight = 24;
constexpr int kLeastVisible = 20;         // height below which a row is left out
constexpr int kThreeColumnsWidth = 430;   // of the preview; below it there are two columns
constexpr int kLeastFullCardWidth = 230;  // a card below either size is compact
constexpr int kLeastFullCardHeight = 86;

constexpr int kDotLeft = 14;  // of the dot's centre
constexpr int kDotRise = 5;   // of the dot's centre above the title's baseline
constexpr std::size_t kStateCharacters = 11;
constexpr int kLeastStateLeft = 92;
constexpr int kDetailLeft = 12;
constexpr int kLeastDetailCharacters = 18;
constexpr std::size_t kExtraWordCharacters = 4;  // that a word longer than its line may have

constexpr int kImpactLeft = 14;
constexpr double kImpactScale = 0.34;
constexpr int kImpactStep = 16;        // from one baseline to the next
constexpr int kLeastBelowDetail = 32;  // the first line of the impact needs more pixels below it
constexpr int kLeastBelowImpact = 14;  // every line of the impact needs more pixels below it
constexpr std::size_t kExtraImpactCharacters = 2;  // of an impact line, over a detail line

struct GridGeometry {
  int columns;
  int card_width;
  int card_height;
};

// How the text of a card is laid out. Lengths count from the card's left and top edge.
struct CardStyle {
  int dot_radius = 0;
  int title_left = 0;
  int title_baseline = 0;
  std::size_t title_characters = 0;
  double title_scale = 0;
  int state_from_right = 0;
  double state_scale = 0;
  int detail_baseline = 0;
  int detail_step = 0;             // from one baseline to the next
  int detail_character_width = 0;  // that is assumed for wrapping
  double detail_scale = 0;
  int detail_margin = 0;  // height of the card that no detail line may use
};

CardStyle compact_style() {
  CardStyle style;
  style.dot_radius = 4;
  style.title_left = 24;
  style.title_baseline = 24;
  style.title_characters = 18;
  style.title_scale = 0.36;
  style.state_from_right = 86;
  style.state_scale = 0.34;
  style.detail_baseline = 43;
  style.detail_step = 15;
  style.detail_character_width = 13;
  style.detail_scale = 0.3;
  style.detail_margin = 48;
  return style;
}

CardStyle full_style() {
  CardStyle style;
  style.dot_radius = 6;
  style.title_left = 34;
  style.title_baseline = 28;
  style.title_characters = 24;
  style.title_scale = 0.48;
  style.state_from_right = 104;
  style.state_scale = 0.46;
  style.detail_baseline = 52;
  style.detail_step = 17;
  style.detail_character_width = 11;
  style.detail_scale = 0.36;
  style.detail_margin = 58;
  return style;
}

bool is_compact(const cv::Rect& rect) {
  return rect.height < kLeastFullCardHeight || rect.width < kLeastFullCardWidth;
}

GridGeometry grid_geometry(const DashboardGeometry& g, int card_count) {
  const int columns = g.preview_width < kThreeColumnsWidth ? 2 : 3;
  const int rows = (card_count + columns - 1) / columns;
  const int width = (g.preview_width - kSpacing * (columns - 1)) / columns;
  const int height = (g.events_height - kSpacing * (rows - 1)) / rows;
  return {columns, std::max(kLeastCardWidth, width), std::max(kLeastCardHeight, height)};
}

std::size_t detail_characters(const CardStyle& style, const cv::Rect& rect) {
  return static_cast<std::size_t>(
      std::max(kLeastDetailCharacters, rect.width / style.detail_character_width));
}

std::size_t detail_lines(const CardStyle& style, const cv::Rect& rect) {
  return static_cast<std::size_t>(
      std::max(1, (rect.height - style.detail_margin) / style.detail_step));
}

void drawCardHead(cv::Mat& canvas, const cv::Rect& rect, const StatusCard& card,
                  const CardStyle& style) {
  const int baseline = rect.y + style.title_baseline;
  const cv::Scalar state_color = color_for(card.state);
  cv::circle(canvas, {rect.x + kDotLeft, baseline - kDotRise}, style.dot_radius, state_color,
             cv::FILLED, cv::LINE_AA);
  put(canvas, clipped(card.title, style.title_characters), {rect.x + style.title_left, baseline},
      style.title_scale, palette::kCardTitle, 1);
  const int state_left = std::max(kLeastStateLeft, rect.width - style.state_from_right);
  put(canvas, clipped(card.state, kStateCharacters), {rect.x + state_left, baseline},
      style.state_scale, state_color, 1);
}

// Returns the baseline of the line after the last one.
int drawCardDetail(cv::Mat& canvas, const cv::Rect& rect, const std::string& detail,
                   const CardStyle& style) {
  const std::size_t width = detail_characters(style, rect);
  const std::vector<std::string> lines = wrap(detail, width);
  const std::size_t count = std::min(lines.size(), detail_lines(style, rect));
  int baseline = rect.y + style.detail_baseline;
  for (std::size_t i = 0; i < count; ++i) {
    put(canvas, clipped(lines[i], width + kExtraWordCharacters), {rect.x + kDetailLeft, baseline},
        style.detail_scale, palette::kCardDetail, 1);
    baseline += style.detail_step;
  }
  return baseline;
}

void drawCardImpact(cv::Mat& canvas, const cv::Rect& rect, const std::string& impact,
                    const CardStyle& style, int baseline) {
  const int bottom = rect.y + rect.height;
  if (baseline + kLeastBelowDetail >= bottom) return;
  const std::size_t width = detail_characters(style, rect) + kExtraImpactCharacters;
  for (const std::string& line : wrap("Impact: " + impact, width)) {
    if (baseline + kLeastBelowImpact >= bottom) break;
    put(canvas, line, {rect.x + kImpactLeft, baseline}, kImpactScale, palette::kFaintText, 1);
    baseline += kImpactStep;
  }
}

void drawCard(cv::Mat& canvas, const cv::Rect& rect, const StatusCard& card) {
  const bool compact = is_compact(rect);
  const CardStyle style = compact ? compact_style() : full_style();
  drawBox(canvas, rect, palette::kCardFill, palette::kCardOutline);
  drawCardHead(canvas, rect, card, style);
  const int next_baseline = drawCardDetail(canvas, rect, card.detail, style);
  if (!compact) drawCardImpact(canvas, rect, card.impact, style, next_baseline);
}

}  // namespace

void drawCardGrid(cv::Mat& canvas, const DashboardGeometry& geometry,
                  const std::vector<StatusCard>& cards) {
  const int count = static_cast<int>(cards.size());
  const GridGeometry grid = grid_geometry(geometry, count);
  for (int i = 0; i < count; ++i) {
    const int x = geometry.margin + (i % grid.columns) * (grid.card_width + kSpacing);
    const int y = geometry.events_top + (i / grid.columns) * (grid.card_height + kSpacing);
    const int room_below = geometry.bottom - y;
    if (room_below < kLeastVisible) break;
    drawCard(canvas, {x, y, grid.card_width, std::min(grid.card_height, room_below)},
             cards[static_cast<std::size_t>(i)]);
  }
}

}  // namespace halcyra
