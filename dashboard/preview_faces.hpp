// The marks over the colour picture: boxes, labels and the speaker's frame.
#pragma once

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_scene.hpp"
#include "dashboard/preview_mapping.hpp"

namespace halcyra {

// Marks every face of the scene that the mapping shows, one after the other.
void drawPreviewFaces(cv::Mat& canvas, const DashboardScene& scene, const PreviewMapping& mapping);

}  // namespace halcyra
