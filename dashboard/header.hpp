// The band along the top: the program's name and its keys.
#pragma once

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_geometry.hpp"

namespace halcyra {

void drawHeader(cv::Mat& canvas, const DashboardGeometry& geometry);

}  // namespace halcyra
