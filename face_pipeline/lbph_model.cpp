#include "face_pipeline/lbph_model.hpp"

#include <opencv2/imgproc.hpp>

#include "face_pipeline/fast_lbph.hpp"

namespace halcyra {
namespace {

const cv::Size kProbeSize(160, 160);

}  // namespace

cv::Ptr<cv::face::LBPHFaceRecognizer> train_model(const std::vector<TrainingSample>& samples) {
  std::vector<cv::Mat> images;
  std::vector<int> labels;
  for (const TrainingSample& sample : samples) {
    images.push_back(sample.image);
    labels.push_back(sample.label);
  }
  const cv::Ptr<cv::face::LBPHFaceRecognizer> model = make_fast_lbph();
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
