#include "dashboard/panel_drawing.hpp"

#include <algorithm>
#include <cmath>

#include <opencv2/imgproc.hpp>

#include "dashboard/font_scale.hpp"
#include "dashboard/kept_text.hpp"
#include "dashboard/palette.hpp"
#include "dashboard/shrinking.hpp"
#include "dashboard/text_cut.hpp"

namespace halcyra {

double g_font_scale = 1.25;

namespace {

constexpr int kTitleBand = 22;          // height of a panel's title
constexpr int kTitleBaseline = 17;      // below the top of the title band
constexpr double kRowScale = 0.34;      // text scale of key/value rows
constexpr int kRowCharacterWidth = 7;   // that is assumed for such a row
constexpr int kLeastRowCharacters = 6;  // that a key or a value gets, however narrow its column
constexpr int kRowGap = 8;              // between key and value
constexpr std::size_t kLeastLineCharacters = 8;
constexpr int kBelowBaseline = 2;       // pixels that must stay free below a baseline
constexpr int kLeastNoticeHeight = 13;  // of the content, for the overflow notice

// Strokes grow with the text, but never get thinner than asked.
int scaled_thickness(int thickness) {
  const double factor = std::max(0.85 * g_font_scale, 1.0);
  return std::max(1, static_cast<int>(std::lround(thickness * factor)));
}

int bottom_of(const cv::Rect& rect) { return rect.y + rect.height; }

// Sets the overflow of the cursor when there is none.
bool has_room(PanelCursor& cursor) {
  if (cursor.y + kBelowBaseline <= bottom_of(cursor.content)) return true;
  cursor.overflow = true;
  return false;
}

std::size_t line_budget(const PanelCursor& cursor, double scale) {
  return std::max(kLeastLineCharacters, characters_in(cursor.content.width, 11.0 * scale));
}

int value_column(const cv::Rect& content, int value_x) {
  if (value_x >= 1) return value_x;
  return content.x + std::max(92, static_cast<int>(content.width * 0.46));
}

int key_budget(const cv::Rect& content, int column) {
  return std::max(kLeastRowCharacters, (column - content.x - kRowGap) / kRowCharacterWidth);
}

int value_budget(const cv::Rect& content, int column) {
  return std::max(kLeastRowCharacters, (content.x + content.width - column) / kRowCharacterWidth);
}

void putRowText(cv::Mat& canvas, const std::string& text, int budget, cv::Point origin,
                const cv::Scalar& color) {
  put(canvas, clipped(text, static_cast<std::size_t>(budget)), origin, kRowScale, color, 1);
}

}  // namespace

void put(cv::Mat& canvas, const std::string& text, cv::Point origin, double scale,
         const cv::Scalar& color, int thickness) {
  const int stroke = scaled_thickness(thickness);
  if (stroke == 1) return drawThinText(canvas, text, origin, scale * g_font_scale, color);
  cv::putText(canvas, text, origin, cv::FONT_HERSHEY_SIMPLEX, scale * g_font_scale, color, stroke,
              cv::LINE_AA);
}

std::size_t characters_in(int width, double character_width) {
  return static_cast<std::size_t>(width / std::max(character_width * g_font_scale, 6.0));
}

void drawBox(cv::Mat& canvas, const cv::Rect& rect, const cv::Scalar& fill,
             const cv::Scalar& outline) {
  cv::rectangle(canvas, rect, fill, cv::FILLED, cv::LINE_AA);
  cv::rectangle(canvas, rect, outline, 1, cv::LINE_AA);
}

void drawScaled(cv::Mat& canvas, const cv::Rect& rect, const cv::Mat& picture) {
  cv::Mat target = canvas(rect);
  if (can_shrink(picture, target.size())) return shrink(picture, target);
  cv::resize(picture, target, target.size(), 0, 0, cv::INTER_AREA);
}

PanelCursor drawPanel(cv::Mat& canvas, const cv::Rect& rect, const std::string& title,
                      double title_scale) {
  drawBox(canvas, rect, palette::kPanelFill, palette::kPanelOutline);
  const int pad =
      std::clamp(static_cast<int>(std::round(std::min(rect.width, rect.height) * 0.035)), 8, 14);
  PanelCursor cursor;
  cursor.panel = rect;
  cursor.content =
      cv::Rect(rect.x + pad, rect.y + pad + kTitleBand, std::max(1, rect.width - 2 * pad),
               std::max(1, rect.height - 2 * pad - kTitleBand));
  cursor.line_height = std::clamp(static_cast<int>(std::round(18.0 * g_font_scale)), 15, 24);
  cursor.y = cursor.content.y + cursor.line_height;
  put(canvas, title, {rect.x + pad, rect.y + pad + kTitleBaseline}, title_scale,
      palette::kPanelTitle, 1);
  return cursor;
}

bool drawTextLine(cv::Mat& canvas, PanelCursor& cursor, const std::string& text, double scale,
                  const cv::Scalar& color, int thickness) {
  if (!has_room(cursor)) return false;
  put(canvas, clipped(text, line_budget(cursor, scale)), {cursor.content.x, cursor.y}, scale, color,
      thickness);
  cursor.y += cursor.line_height;
  return true;
}

void drawKeyValue(cv::Mat& canvas, PanelCursor& cursor, const std::string& key,
                  const std::string& value, int value_x) {
  if (!has_room(cursor)) return;
  const cv::Rect& content = cursor.content;
  const int column = value_column(content, value_x);
  putRowText(canvas, key, key_budget(content, column), {content.x, cursor.y}, palette::kRowKey);
  putRowText(canvas, value, value_budget(content, column), {column, cursor.y}, palette::kRowValue);
  cursor.y += cursor.line_height;
}

void drawOverflowNotice(cv::Mat& canvas, const PanelCursor& cursor) {
  if (!cursor.overflow || cursor.content.height < kLeastNoticeHeight) return;
  put(canvas, "more in debug mode", {cursor.content.x, bottom_of(cursor.content) - kBelowBaseline},
      0.3, palette::kFaintText, 1);
}

}  // namespace halcyra
