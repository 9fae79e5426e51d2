// A model that throws for faces with a marked corner.
#pragma once

#include <stdexcept>
#include <utility>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/face.hpp>

namespace halcyra {

// Predicts as `model` does, but throws std::runtime_error if the probe's upper left corner is
// black or white. The message names the color.
class FailingModel : public cv::face::LBPHFaceRecognizer {
 public:
  explicit FailingModel(cv::Ptr<cv::face::LBPHFaceRecognizer> model) : model_(std::move(model)) {}

  using cv::face::FaceRecognizer::predict;
  void predict(cv::InputArray probe, cv::Ptr<cv::face::PredictCollector> collector) const override {
    const double corner = cv::mean(probe.getMat()({0, 0, 8, 8}))[0];
    if (corner == 0.0) throw std::runtime_error("black");
    if (corner == 255.0) throw std::runtime_error("white");
    model_->predict(probe, collector);
  }
  double getThreshold() const override { return model_->getThreshold(); }
  bool empty() const override { return model_->empty(); }

  int getGridX() const override { return model_->getGridX(); }
  int getGridY() const override { return model_->getGridY(); }
  int getRadius() const override { return model_->getRadius(); }
  int getNeighbors() const override { return model_->getNeighbors(); }
  std::vector<cv::Mat> getHistograms() const override { return model_->getHistograms(); }
  cv::Mat getLabels() const override { return model_->getLabels(); }

  void setGridX(int) override {}
  void setGridY(int) override {}
  void setRadius(int) override {}
  void setNeighbors(int) override {}
  void setThreshold(double) override {}
  void train(cv::InputArrayOfArrays, cv::InputArray) override {}
  using cv::face::FaceRecognizer::read;
  using cv::face::FaceRecognizer::write;
  void read(const cv::FileNode&) override {}
  void write(cv::FileStorage&) const override {}

 private:
  cv::Ptr<cv::face::LBPHFaceRecognizer> model_;
};

}  // namespace halcyra
