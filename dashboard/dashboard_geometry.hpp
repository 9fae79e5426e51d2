// Where every part of the dashboard is. Computed once per picture; all lengths in pixels.
#pragma once

#include <opencv2/core/types.hpp>

#include "app/run_state/options.hpp"

namespace halcyra {

constexpr int kLowCanvas = 620;      // height below which header and footer use smaller text
constexpr int kPreviewPadding = 12;  // between the frame of the preview and what is in it
constexpr int kOverlayInset = 14;    // from the edges of a picture to a note or inset over it

struct DashboardGeometry {
  int width;   // of the canvas
  int height;  // of the canvas
  int margin;  // around everything
  int gap;     // between columns and bands
  int header_height;
  int footer_height;
  int events_height;  // of the band of cards and events
  int bottom;         // where that band ends
  int events_top;     // where that band begins
  int main_top;       // top of the preview and of the side panels
  int main_height;
  int side_width;
  int preview_width;
  int side_x;           // left edge of the side column
  cv::Rect preview;     // the framed preview, status strip included
  cv::Rect image_area;  // where the picture of the chosen view goes, inside the preview
};

// For a canvas of the options' size, each side raised to at least 800 x 480. Up to 7680 x 4320
// every part lies on the canvas and no two parts overlap.
DashboardGeometry dashboard_geometry(const Options& options);

// The height of the band of cards and events before its minimum is applied. The text size of the
// events depends on it.
int suggested_events_height(int canvas_height);

}  // namespace halcyra
