// The panels of the right-hand column: room awareness, sensor status and recent events.
#pragma once

#include <deque>
#include <string>

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_geometry.hpp"
#include "dashboard/dashboard_scene.hpp"

namespace halcyra {

// Draws the two panels beside the preview: what the room awareness decided, and how the sensor and
// the voice service are.
void drawSidePanels(cv::Mat& canvas, const DashboardGeometry& geometry,
                    const DashboardScene& scene);

// Draws the panel beside the cards: the events in list order, as many as fit.
void drawEventPanel(cv::Mat& canvas, const DashboardGeometry& geometry,
                    const std::deque<std::string>& events);

}  // namespace halcyra
