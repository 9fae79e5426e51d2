// The two panels of the right-hand column: who is in the room, and how the senses are.
#pragma once

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_geometry.hpp"
#include "dashboard/dashboard_scene.hpp"

namespace halcyra {

void drawSidePanels(cv::Mat& canvas, const DashboardGeometry& geometry,
                    const DashboardScene& scene);

}  // namespace halcyra
