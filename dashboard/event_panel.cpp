#include "dashboard/event_panel.hpp"

#include "dashboard/panel_drawing.hpp"

namespace halcyra {
namespace {

const cv::Scalar kEventColor(176, 187, 202);

constexpr int kHighBand = 134;  // above it the events are written larger

}  // namespace

void drawEventPanel(cv::Mat& canvas, const DashboardGeometry& geometry,
                    const std::deque<std::string>& events) {
  const double scale = suggested_events_height(geometry.height) > kHighBand ? 0.33 : 0.29;
  PanelCursor cursor = drawPanel(
      canvas, {geometry.side_x, geometry.events_top, geometry.side_width, geometry.events_height},
      "RECENT EVENTS", 0.38);
  for (const std::string& event : events) {
    if (!drawTextLine(canvas, cursor, event, scale, kEventColor, 1)) break;
  }
  drawOverflowNotice(canvas, cursor);
}

}  // namespace halcyra
