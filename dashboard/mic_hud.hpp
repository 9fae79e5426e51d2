// The six-segment strip that shows from where the last voice came.
#pragma once

#include <vector>

#include <opencv2/core/mat.hpp>

#include "face_pipeline/face_info.hpp"

namespace halcyra {

struct RuntimeStatus;

// Draws the strip along the bottom of `area`, lit at the voice's zone in the speaker's colour, or
// grey when the direction is not trusted. Nothing when not `enabled` or the area is not more than
// 119 wide and 69 high.
void drawMicHud(cv::Mat& canvas, const cv::Rect& area, const RuntimeStatus& status, bool enabled,
                const std::vector<FaceInfo>& faces);

}  // namespace halcyra
