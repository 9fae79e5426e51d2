// Paints one complete picture of the control center.
#pragma once

#include <vector>

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

struct RuntimeStatus;

// Makes `canvas` an 8-bit BGR picture of the options' size, each side raised to at least 800 x 480.
// Its memory is painted over when it fits and no other cv::Mat shares it; otherwise the canvas gets
// memory of its own and what the others hold stays as it is. `color`, `infrared` and `depth` are
// 8-bit BGR pictures, each empty when there is none; face boxes are in pixels of `color`. An empty
// view means "combo". Apart from g_font_scale, the picture depends on the arguments alone.
void draw_dashboard(cv::Mat& canvas, const cv::Mat& color, const cv::Mat& infrared,
                    const cv::Mat& depth, const RuntimeStatus& status, const Options& options,
                    const std::vector<FaceInfo>& faces);

}  // namespace halcyra
