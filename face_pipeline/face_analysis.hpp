// Turns a frame's detections into the list of faces that the rest of the program works with.
#pragma once

#include <vector>

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "face_pipeline/detection.hpp"
#include "face_pipeline/face_info.hpp"
#include "face_pipeline/recognition_state.hpp"

namespace halcyra {

struct RuntimeStatus;

// Clamps each detection to the image, measures and judges it and, if there is a model, recognises
// it. Numbers and colours the faces, and updates the votes, tallies and last values of `state`, in
// the order given. `grey` is the full-resolution 8-bit one-channel image that the boxes refer to;
// detections outside it are left out. Several faces are measured and compared with the model on
// OpenCV's threads. If that fails for a face, its exception is thrown when the faces before it have
// been dealt with.
std::vector<FaceInfo> analyze_faces(const std::vector<Detection>& detections, const cv::Mat& grey,
                                    RecognitionState& state, RuntimeStatus& status,
                                    const Options& options);

}  // namespace halcyra
