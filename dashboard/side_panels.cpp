#include "dashboard/side_panels.hpp"

#include <algorithm>
#include <string>

#include "dashboard/palette.hpp"
#include "dashboard/panel_drawing.hpp"
#include "dashboard/text_cut.hpp"

namespace halcyra {
namespace {

constexpr double kTitleScale = 0.38;
constexpr double kRoomTitleScale = 0.4;
constexpr double kReasonScale = 0.3;
constexpr std::size_t kReasonLines = 2;
constexpr int kHighBand = 134;  // above this suggested height the events are written larger

struct PanelRects {
  cv::Rect room;
  cv::Rect sensor;
};

PanelRects panel_rects(const DashboardGeometry& g) {
  const int sensor_height = std::clamp(static_cast<int>(g.main_height * 0.3), 104, 132);
  const int room_height = std::max(90, g.main_height - sensor_height - g.gap);
  return {cv::Rect(g.side_x, g.main_top, g.side_width, room_height),
          cv::Rect(g.side_x, g.main_top + room_height + g.gap, g.side_width, sensor_height)};
}

int value_column(const PanelCursor& cursor, int least, double share) {
  return cursor.content.x + std::max(least, static_cast<int>(cursor.content.width * share));
}

void drawReason(cv::Mat& canvas, PanelCursor& cursor, const std::string& reason) {
  const std::vector<std::string> lines =
      wrap("reason: " + reason, characters_in(cursor.content.width, 3.15));
  for (std::size_t i = 0; i < std::min(lines.size(), kReasonLines); ++i) {
    drawTextLine(canvas, cursor, lines[i], kReasonScale, palette::kPanelText, 1);
  }
  if (lines.size() > kReasonLines) cursor.overflow = true;
}

void drawRoomPanel(cv::Mat& canvas, const cv::Rect& rect, const DashboardScene& scene) {
  const RoomAwareness& room = scene.status.room;
  PanelCursor cursor = drawPanel(canvas, rect, "ROOM AWARENESS", kRoomTitleScale);
  const int column = value_column(cursor, 116, 0.54);
  drawKeyValue(canvas, cursor, "people", std::to_string(room.people), column);
  drawKeyValue(canvas, cursor, "faces", std::to_string(room.faces), column);
  drawKeyValue(canvas, cursor, "skeletons", std::to_string(room.skeletons), column);
  drawKeyValue(canvas, cursor, "Dorran", room.owner_visible ? "yes" : "no", column);
  drawKeyValue(canvas, cursor, "unknown", std::to_string(room.unknown_people), column);
  drawKeyValue(canvas, cursor, "target", room.target, column);
  drawKeyValue(canvas, cursor, "current view", scene.label, column);
  drawKeyValue(canvas, cursor, "view mode", room.view_mode, column);
  drawKeyValue(canvas, cursor, "fallback", room.fallback, column);
  drawReason(canvas, cursor, room.reason);
  drawOverflowNotice(canvas, cursor);
}

void drawSensorPanel(cv::Mat& canvas, const cv::Rect& rect, const RuntimeStatus& status) {
  PanelCursor cursor = drawPanel(canvas, rect, "SENSOR STATUS", kTitleScale);
  const int column = value_column(cursor, 86, 0.42);
  drawKeyValue(canvas, cursor, "Skeleton", status.skeleton_available ? "OK" : "degraded", column);
  drawKeyValue(canvas, cursor, "Depth", status.depth_ok ? "OK" : "status-only", column);
  drawKeyValue(canvas, cursor, "IR", status.ir_ok ? "OK" : "status-only", column);
  drawKeyValue(canvas, cursor, "Voice", status.voice.live_processing, column);
  drawKeyValue(canvas, cursor, "Match", status.room.voice_match, column);
  drawOverflowNotice(canvas, cursor);
}

}  // namespace

void drawSidePanels(cv::Mat& canvas, const DashboardGeometry& geometry,
                    const DashboardScene& scene) {
  const PanelRects rects = panel_rects(geometry);
  drawRoomPanel(canvas, rects.room, scene);
  drawSensorPanel(canvas, rects.sensor, scene.status);
}

void drawEventPanel(cv::Mat& canvas, const DashboardGeometry& geometry,
                    const std::deque<std::string>& events) {
  const double scale = suggested_events_height(geometry.height) > kHighBand ? 0.33 : 0.29;
  PanelCursor cursor = drawPanel(
      canvas, {geometry.side_x, geometry.events_top, geometry.side_width, geometry.events_height},
      "RECENT EVENTS", kTitleScale);
  for (const std::string& event : events) {
    if (!drawTextLine(canvas, cursor, event, scale, palette::kPanelText, 1)) break;
  }
  drawOverflowNotice(canvas, cursor);
}

}  // namespace halcyra
