// The drawing vocabulary of the dashboard: scaled text, and panels with lines that stop at the
// bottom edge. Colours are BGR, lengths pixels, text scales factors of g_font_scale.
#pragma once

#include <string>

#include <opencv2/core/mat.hpp>

#include "dashboard/panel_cursor.hpp"

namespace halcyra {

// Draws one run of text with its baseline starting at `origin`.
void put(cv::Mat& canvas, const std::string& text, cv::Point origin, double scale,
         const cv::Scalar& color, int thickness);

// Fills `rect` and draws its outline, both anti-aliased and one pixel wide.
void drawBox(cv::Mat& canvas, const cv::Rect& rect, const cv::Scalar& fill,
             const cv::Scalar& outline);

// Draws an empty panel with its title and returns the cursor of its first line.
PanelCursor drawPanel(cv::Mat& canvas, const cv::Rect& rect, const std::string& title,
                      double title_scale);

// Writes one line, cut to the panel's width, and moves the cursor down. False when there is no
// room: nothing is drawn and the cursor's overflow is set.
bool drawTextLine(cv::Mat& canvas, PanelCursor& cursor, const std::string& text, double scale,
                  const cv::Scalar& color, int thickness);

// Writes one row of key and value, the value column at `value_x` or, when that is below 1, at a
// place derived from the width. Without room nothing is drawn and the overflow is set.
void drawKeyValue(cv::Mat& canvas, PanelCursor& cursor, const std::string& key,
                  const std::string& value, int value_x);

// Says on the last line that text was refused, when any was and the panel is tall enough.
void drawOverflowNotice(cv::Mat& canvas, const PanelCursor& cursor);

}  // namespace halcyra
