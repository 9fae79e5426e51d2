// The band across the bottom of the dashboard: the safety sentence.
#pragma once

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_geometry.hpp"

namespace halcyra {

// A narrow canvas gets a shorter sentence. What does not fit in two lines is left out.
void drawFooter(cv::Mat& canvas, const DashboardGeometry& geometry);

}  // namespace halcyra
