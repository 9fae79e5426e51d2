// Finds and judges the faces of a picture as the dashboard does.
#pragma once

#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "face_pipeline/face_detectors.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

// Loads the cascades. False, with a sentence in `complaint`, if one of them is missing or is not a
// cascade.
bool load_face_search(FaceDetectors& detectors, const Options& options, std::string& complaint);

// The faces in the 8-bit grey picture, each with its measures and its verdict; none is recognised.
std::vector<FaceInfo> search_faces(FaceDetectors& detectors, const cv::Mat& grey,
                                   const Options& options);

// The face's pixels, copied: what becomes a sample, and what the recogniser is shown.
cv::Mat face_crop(const cv::Mat& grey, const FaceInfo& face);

}  // namespace halcyra
