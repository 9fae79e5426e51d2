// Drawing helpers that all parts of the dashboard share: scaled text, boxes, scaled pictures, and
// panels whose lines stop at the bottom edge. Colours are BGR, lengths are pixels, and text scales
// are multiplied by g_font_scale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <opencv2/core/mat.hpp>

namespace halcyra {

// Where the next text line of a panel goes.
struct PanelCursor {
  cv::Rect panel;                // the whole panel
  cv::Rect content;              // the part for text, below the title
  std::int32_t y = 0;            // baseline of the next line
  std::int32_t line_height = 0;  // from one baseline to the next
  bool overflow = false;         // a line was refused for lack of room
};

// Draws one line of text, its baseline starting at `origin`. The thickness grows with g_font_scale
// but is never less than asked for, nor less than 1.
void put(cv::Mat& canvas, const std::string& text, cv::Point origin, double scale,
         const cv::Scalar& color, int thickness);

// How many characters fit into `width` when each takes `character_width` times g_font_scale pixels,
// or 6 where that is more. `width` is not negative.
std::size_t characters_in(int width, double character_width);

// Fills `rect` and draws an outline of one pixel around it, both anti-aliased.
void drawBox(cv::Mat& canvas, const cv::Rect& rect, const cv::Scalar& fill,
             const cv::Scalar& outline);

// Draws the whole picture, scaled to fill `rect`, with the pixels of cv::resize with INTER_AREA.
// Neither may be empty; `rect` lies on the canvas.
void drawScaled(cv::Mat& canvas, const cv::Rect& rect, const cv::Mat& picture);

// Draws an empty panel with its title, which is not cut, and returns the cursor of its first line.
PanelCursor drawPanel(cv::Mat& canvas, const cv::Rect& rect, const std::string& title,
                      double title_scale);

// Writes one line, cut to the width of the panel, and moves the cursor down. Returns false when
// there is no room: then nothing is drawn and the cursor's overflow is set.
bool drawTextLine(cv::Mat& canvas, PanelCursor& cursor, const std::string& text, double scale,
                  const cv::Scalar& color, int thickness);

// Writes one row of key and value and moves the cursor down. The value starts at `value_x` or, when
// that is below 1, at a place derived from the width. Without room nothing is drawn and the
// cursor's overflow is set.
void drawKeyValue(cv::Mat& canvas, PanelCursor& cursor, const std::string& key,
                  const std::string& value, int value_x);

// Writes "more in debug mode" over the last line when a line was refused and the content is more
// than 12 pixels high.
void drawOverflowNotice(cv::Mat& canvas, const PanelCursor& cursor);

}  // namespace halcyra
