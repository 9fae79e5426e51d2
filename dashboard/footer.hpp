// The safety line along the bottom.
#pragma once

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_geometry.hpp"

namespace halcyra {

void drawFooter(cv::Mat& canvas, const DashboardGeometry& geometry);

}  // namespace halcyra
