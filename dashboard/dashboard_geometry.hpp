// Where everything on the dashboard stands. Computed once per picture; all lengths in pixels.
#pragma once

#include <opencv2/core/types.hpp>

#include "app/run_state/options.hpp"

namespace halcyra {

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
  int main_top;       // where the preview and the side panels begin
  int main_height;
  int side_width;
  int preview_width;
  int side_x;           // left edge of the side column
  cv::Rect preview;     // the framed preview, status strip included
  cv::Rect image_area;  // where the chosen picture goes, inside the preview
};

// For a canvas of the options' size, at least 800 x 480. With sides from there up to 7680 x 4320
// every rectangle lies on the canvas.
DashboardGeometry dashboard_geometry(const Options& options);

// The largest height of the event band that the canvas height suggests; it also decides how large
// the events are written.
int suggested_events_height(int canvas_height);

}  // namespace halcyra
