#include "dashboard/card_grid.hpp"

#include <algorithm>
#include <string>

#include <opencv2/imgproc.hpp>

#include "dashboard/panel_drawing.hpp"
#include "dashboard/status_colors.hpp"
#include "dashboard/text_cut.hpp"

namespace halcyra {
namespace {

const cv::Scalar kFill(29, 35, 45);
const cv::Scalar kOutline(52, 62, 76);
const cv::Scalar kTitleColor(230, 236, 244);
const cv::Scalar kDetailColor(184, 194, 208);
const cv::Scalar kImpactColor(142, 153, 170);

constexpr int kSpacing = 8;        // between cards
constexpr int kLeastVisible = 20;  // height below which a row is not begun

struct GridGeometry {
  int columns;
  int card_width;
  int card_height;
};

// How text is laid out on a card; compact cards are small ones.
struct CardStyle {
  int dot_radius;
  int title_baseline;  // below the card's top, like the other baselines
  int title_left;
  std::size_t title_budget;
  double title_scale;
  int state_from_right;
  double state_scale;
  int detail_character_width;
  int detail_baseline;
  int detail_step;
  double detail_scale;
  int detail_margin;   // what of the height is no detail line
  int one_line_up_to;  // height up to which there is one detail line
};

constexpr CardStyle kCompact = {4, 24, 24, 18, 0.36, 86, 0.34, 13, 43, 15, 0.3, 48, 77};
constexpr CardStyle kRoomy = {6, 28, 34, 24, 0.48, 104, 0.46, 11, 52, 17, 0.36, 58, 91};

bool is_compact(const cv::Rect& rect) { return rect.height < 86 || rect.width < 230; }

GridGeometry grid_geometry(const DashboardGeometry& g, int card_count) {
  const int columns = g.preview_width < 430 ? 2 : 3;
  const int rows = (card_count + columns - 1) / columns;
  return {columns, std::max(110, (g.preview_width - kSpacing * (columns - 1)) / columns),
          std::max(24, (g.events_height - kSpacing * (rows - 1)) / rows)};
}

std::size_t detail_width(const CardStyle& style, const cv::Rect& rect) {
  return static_cast<std::size_t>(std::max(18, rect.width / style.detail_character_width));
}

std::size_t detail_limit(const CardStyle& style, const cv::Rect& rect) {
  if (rect.height <= style.one_line_up_to) return 1;
  return static_cast<std::size_t>((rect.height - style.detail_margin) / style.detail_step);
}

void drawCardHead(cv::Mat& canvas, const cv::Rect& rect, const StatusCard& card,
                  const CardStyle& style) {
  const int baseline = rect.y + style.title_baseline;
  const cv::Scalar state_color = color_for(card.state);
  cv::circle(canvas, {rect.x + 14, baseline - 5}, style.dot_radius, state_color, cv::FILLED,
             cv::LINE_AA);
  put(canvas, clipped(card.title, style.title_budget), {rect.x + style.title_left, baseline},
      style.title_scale, kTitleColor, 1);
  put(canvas, clipped(card.state, 11),
      {rect.x + std::max(92, rect.width - style.state_from_right), baseline}, style.state_scale,
      state_color, 1);
}

// Returns the baseline of the line after the last one.
int drawCardDetail(cv::Mat& canvas, const cv::Rect& rect, const std::string& detail,
                   const CardStyle& style) {
  const std::size_t width = detail_width(style, rect);
  const std::vector<std::string> lines = wrap(detail, width);
  const std::size_t count = std::min(lines.size(), detail_limit(style, rect));
  int baseline = rect.y + style.detail_baseline;
  for (std::size_t i = 0; i < count; ++i) {
    put(canvas, clipped(lines[i], width + 4), {rect.x + 12, baseline}, style.detail_scale,
        kDetailColor, 1);
    baseline += style.detail_step;
  }
  return baseline;
}

void drawCardImpact(cv::Mat& canvas, const cv::Rect& rect, const std::string& impact,
                    const CardStyle& style, int baseline) {
  const int bottom = rect.y + rect.height;
  if (baseline + 32 >= bottom) return;
  for (const std::string& line : wrap("Impact: " + impact, detail_width(style, rect) + 2)) {
    if (baseline + 14 >= bottom) break;
    put(canvas, line, {rect.x + 14, baseline}, 0.34, kImpactColor, 1);
    baseline += 16;
  }
}

void drawCard(cv::Mat& canvas, const cv::Rect& rect, const StatusCard& card) {
  const bool compact = is_compact(rect);
  const CardStyle& style = compact ? kCompact : kRoomy;
  drawBox(canvas, rect, kFill, kOutline);
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
