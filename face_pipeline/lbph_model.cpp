#include "face_pipeline/lbph_model.hpp"

#include <cfloat>

#include <opencv2/imgproc.hpp>

namespace halcyra {
namespace {

const cv::Size kProbeSize(160, 160);

}  // namespace

// Radius 1 with 8 neighbours over an 8 x 8 grid is the classic operator of Ahonen et al., "Face
// Recognition with Local Binary Patterns" (2004).
cv::Ptr<cv::face::LBPHFaceRecognizer> train_model(const std::vector<TrainingSample>& samples) {
  std::vector<cv::Mat> images;
  std::vector<int> labels;
  for (const TrainingSample& sample : samples) {
    images.push_back(sample.image);
    labels.push_back(sample.label);
  }
  auto model = cv::face::LBPHFaceRecognizer::create(1, 8, 8, 8, DBL_MAX);
  model->train(images, labels);
  return model;
}

cv::Mat make_probe(const cv::Mat& crop) {
  cv::Mat equalized;
  cv::equalizeHist(crop, equalized);
  cv::Mat probe;
  cv::resize(equalized, probe, kProbeSize, 0, 0, cv::INTER_AREA);
  return probe;
}

}  // namespace halcyra
