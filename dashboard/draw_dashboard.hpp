// Paints one complete picture of the control center.
#pragma once

#include <vector>

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

struct RuntimeStatus;

// Replaces `canvas` by a new 8-bit BGR picture of at least 800 x 480 pixels. `color`, `infrared`
// and `depth` are BGR previews, each empty when there is none; face boxes are in the pixels of
// `color`. Keeps no state: the same inputs give the same picture.
void draw_dashboard(cv::Mat& canvas, const cv::Mat& color, const cv::Mat& infrared,
                    const cv::Mat& depth, const RuntimeStatus& status, const Options& options,
                    const std::vector<FaceInfo>& faces);

}  // namespace halcyra
