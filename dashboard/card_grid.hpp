// The grid of status cards under the preview.
#pragma once

#include <vector>

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_geometry.hpp"
#include "dashboard/status_card.hpp"

namespace halcyra {

// Draws the cards row by row; those that find no room below are left out.
void drawCardGrid(cv::Mat& canvas, const DashboardGeometry& geometry,
                  const std::vector<StatusCard>& cards);

}  // namespace halcyra
