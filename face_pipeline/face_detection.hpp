// Searches a grey image for faces, in one pose or in three.
#pragma once

#include <vector>

#include <opencv2/objdetect.hpp>

#include "app/run_state/options.hpp"
#include "face_pipeline/detection.hpp"

namespace halcyra {

// One cascade pass over an 8-bit one-channel image, with its histogram equalised. With
// `detect_scale` below 1 the pass works on a shrunken copy; otherwise it equalises the caller's
// pixels in place. Boxes are divided by `detect_scale` either way, so below 1 they are in pixels of
// the image. They are in the cascade's order. OpenCV throws if the cascade is not loaded, if
// `scale_factor` is not above 1, and, with `detect_scale` below 1, if the image is empty.
std::vector<cv::Rect> detect_faces(cv::CascadeClassifier& cascade, const cv::Mat& grey,
                                   const Options& options);

// Every pass that `options.detector_type` asks for, merged by dedupe. `profile` is null if that
// cascade did not load; its passes are then left out. "profile_right" faces are found in the
// mirrored image and mapped back; that pass never changes the caller's pixels.
std::vector<Detection> detect_multi(cv::CascadeClassifier& frontal, cv::CascadeClassifier* profile,
                                    const cv::Mat& grey, const Options& options);

}  // namespace halcyra
