// The strip of six segments that shows which direction the last voice came from.
#pragma once

#include <vector>

#include <opencv2/core/mat.hpp>

#include "face_pipeline/face_info.hpp"

namespace halcyra {

struct RuntimeStatus;

// Draws the strip along the bottom of `area`. The segment of the voice's zone is lit: grey when the
// direction is not trusted, in a colour of its own when the speaker is ambiguous, else in the
// colour of the first face that the room's voice match names, or in a default colour when it names
// none. Without a known angle no segment is lit. Draws nothing when not `enabled` or when the area
// is smaller than 120 x 70.
void drawMicHud(cv::Mat& canvas, const cv::Rect& area, const RuntimeStatus& status, bool enabled,
                const std::vector<FaceInfo>& faces);

}  // namespace halcyra
