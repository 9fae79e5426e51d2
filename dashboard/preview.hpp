// The framed preview: a status strip, and below it the picture of the chosen view.
#pragma once

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_geometry.hpp"
#include "dashboard/dashboard_scene.hpp"

namespace halcyra {

// Draws the strip, the picture with its insets and face marks, and the microphone strip over it. A
// view whose picture is missing gets an explanation instead.
void drawPreview(cv::Mat& canvas, const DashboardGeometry& geometry, const DashboardScene& scene);

}  // namespace halcyra
