// The grid of status cards under the preview.
#pragma once

#include <vector>

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_geometry.hpp"
#include "dashboard/status_cards.hpp"

namespace halcyra {

// Draws the cards row by row, the last row cut where the band ends. A row with less than 20 pixels
// left for it is not drawn, nor are the rows after it.
void drawCardGrid(cv::Mat& canvas, const DashboardGeometry& geometry,
                  const std::vector<StatusCard>& cards);

}  // namespace halcyra
