// The marks over the colour picture: boxes, labels and the mark of the speaker.
#pragma once

#include <opencv2/core/mat.hpp>

#include "dashboard/dashboard_scene.hpp"
#include "dashboard/preview_mapping.hpp"

namespace halcyra {

// Marks the faces of the scene in their order, each in its colour; faces that the mapping does not
// show are skipped. In debug mode every face gets a box and a label with its details; otherwise the
// view and the options decide.
void drawPreviewFaces(cv::Mat& canvas, const DashboardScene& scene, const PreviewMapping& mapping);

}  // namespace halcyra
