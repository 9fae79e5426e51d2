#include "dashboard/dashboard_geometry.hpp"

#include <algorithm>

#include "app/run_state/window_limits.hpp"

namespace halcyra {
namespace {

int share(int length, double factor) { return static_cast<int>(length * factor); }

void place_preview(DashboardGeometry& g) {
  const int strip_height = std::clamp(share(g.main_height, 0.105), 42, 58);
  g.preview = cv::Rect(g.margin, g.main_top, g.preview_width, g.main_height);
  g.image_area = cv::Rect(g.margin + kPreviewPadding, g.main_top + strip_height,
                          g.preview_width - 2 * kPreviewPadding,
                          g.main_height - strip_height - kPreviewPadding);
}

}  // namespace

int suggested_events_height(int canvas_height) { return share(canvas_height, 0.205); }

DashboardGeometry dashboard_geometry(const Options& options) {
  DashboardGeometry g;
  g.width = std::max(kLeastWidth, options.width);
  g.height = std::max(kLeastHeight, options.height);
  g.margin = std::clamp(share(g.width, 0.015), 12, 28);
  g.gap = std::clamp(share(g.width, 0.012), 10, 24);
  g.header_height = std::clamp(share(g.height, 0.085), 48, 76);
  g.footer_height = std::clamp(share(g.height, 0.052), 28, 42);
  g.events_height = std::max(98, suggested_events_height(g.height));
  g.bottom = g.height - g.footer_height - g.margin;
  g.events_top = g.bottom - g.events_height;
  g.main_top = g.margin + g.header_height;
  g.main_height = std::max(190, g.events_top - g.main_top - g.gap);
  g.side_width = std::clamp(share(g.width, 0.31), 292, 500);
  g.preview_width = std::max(300, g.width - g.side_width - g.gap - 2 * g.margin);
  g.side_x = g.margin + g.preview_width + g.gap;
  place_preview(g);
  return g;
}

}  // namespace halcyra
