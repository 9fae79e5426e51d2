// The band across the top of the dashboard: the title and the keys.
#pragma once

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_geometry.hpp"

namespace halcyra {

// A wide canvas also gets the subtitle and the full list of keys.
void drawHeader(cv::Mat& canvas, const DashboardGeometry& geometry);

}  // namespace halcyra
