#include "dashboard/draw_dashboard.hpp"

#include "app/run_state/views.hpp"
#include "dashboard/card_grid.hpp"
#include "dashboard/dashboard_geometry.hpp"
#include "dashboard/dashboard_scene.hpp"
#include "dashboard/footer.hpp"
#include "dashboard/header.hpp"
#include "dashboard/palette.hpp"
#include "dashboard/preview.hpp"
#include "dashboard/side_panels.hpp"
#include "dashboard/status_cards.hpp"

namespace halcyra {
namespace {

// Allocating a canvas takes longer than painting it, so the old one is reused unless somebody else
// holds it.
void renew_canvas(cv::Mat& canvas, cv::Size size) {
  const bool free = canvas.u != nullptr && canvas.u->refcount == 1;
  if (!free || canvas.size() != size || canvas.type() != CV_8UC3) canvas = cv::Mat(size, CV_8UC3);
  canvas.setTo(cv::Scalar(palette::kBackground));
}

}  // namespace

void draw_dashboard(cv::Mat& canvas, const cv::Mat& color, const cv::Mat& infrared,
                    const cv::Mat& depth, const RuntimeStatus& status, const Options& options,
                    const std::vector<FaceInfo>& faces) {
  const std::string view = options.view.empty() ? "combo" : options.view;
  const DashboardScene scene{color,   infrared, depth, status,
                             options, faces,    view,  view_label(view)};
  const DashboardGeometry geometry = dashboard_geometry(options);
  renew_canvas(canvas, {geometry.width, geometry.height});
  drawHeader(canvas, geometry);
  drawPreview(canvas, geometry, scene);
  drawSidePanels(canvas, geometry, scene);
  drawCardGrid(canvas, geometry, status_cards(status));
  drawEventPanel(canvas, geometry, status.events);
  drawFooter(canvas, geometry);
}

}  // namespace halcyra
