// The panel of recent events.
#pragma once

#include <deque>
#include <string>

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_geometry.hpp"

namespace halcyra {

// Writes the events in list order until one finds no room.
void drawEventPanel(cv::Mat& canvas, const DashboardGeometry& geometry,
                    const std::deque<std::string>& events);

}  // namespace halcyra
