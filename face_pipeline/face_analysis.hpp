// Turns a frame's detections into the list of faces that everything else works with.
#pragma once

#include <vector>

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "face_pipeline/detection.hpp"
#include "face_pipeline/face_info.hpp"
#include "face_pipeline/recognition_state.hpp"

namespace halcyra {

struct RuntimeStatus;

// Clamps, measures, judges and, with a model, recognises each detection, in order; numbers and
// colours the faces and keeps the tallies and last values of `state`. `grey` is the full-resolution
// 8-bit image that the boxes refer to; detections outside it are left out.
std::vector<FaceInfo> analyze_faces(const std::vector<Detection>& detections, const cv::Mat& grey,
                                    RecognitionState& state, RuntimeStatus& status,
                                    const Options& options);

}  // namespace halcyra
