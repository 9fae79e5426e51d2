// The framed preview: its status strip and the picture of the chosen view with all that lies over
// it.
#pragma once

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_geometry.hpp"
#include "dashboard/dashboard_scene.hpp"

namespace halcyra {

void drawPreview(cv::Mat& canvas, const DashboardGeometry& geometry, const DashboardScene& scene);

}  // namespace halcyra
