// The model of local binary patterns that faces are compared by, and what is compared with it.
#pragma once

#include <vector>

#include <opencv2/core/cvstd_wrapper.hpp>
#include <opencv2/core/mat.hpp>
#include <opencv2/face.hpp>

#include "face_pipeline/training_sample.hpp"

namespace halcyra {

// A model of the samples, in their order, under their labels (see fast_lbph.hpp). It has no
// threshold of its own, so it always answers, and the caller judges the distance. OpenCV throws if
// there is no sample.
cv::Ptr<cv::face::LBPHFaceRecognizer> train_model(const std::vector<TrainingSample>& samples);

// What the model is asked about: the 8-bit grey crop of a face, equalised and scaled to 160 x 160.
cv::Mat make_probe(const cv::Mat& crop);

}  // namespace halcyra
