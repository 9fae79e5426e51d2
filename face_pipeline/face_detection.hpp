// Searches a grey image for faces, in one pose or in three.
#pragma once

#include <vector>

#include <opencv2/objdetect.hpp>

#include "app/run_state/options.hpp"
#include "face_pipeline/detection.hpp"

namespace halcyra {

// One cascade pass over an 8-bit one-channel image; boxes in that image's pixels, in the cascade's
// order. With `detect_scale` below 1 it works on a shrunken copy; otherwise it equalises the
// caller's pixels in place.
std::vector<cv::Rect> detect_faces(cv::CascadeClassifier& cascade, const cv::Mat& grey,
                                   const Options& options);

// Every pass that `options.detector_type` asks for, merged by dedupe. `profile` is null when that
// cascade did not load; its passes are then left out. "profile_right" faces are found in the
// mirrored image and mapped back.
std::vector<Detection> detect_multi(cv::CascadeClassifier& frontal, cv::CascadeClassifier* profile,
                                    const cv::Mat& grey, const Options& options);

}  // namespace halcyra
