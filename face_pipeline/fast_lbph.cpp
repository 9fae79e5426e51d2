#include "face_pipeline/fast_lbph.hpp"

#include <algorithm>
#include <cfloat>
#include <cstddef>
#include <utility>
#include <vector>

#include <opencv2/core.hpp>

#include "face_pipeline/local_patterns.hpp"

namespace halcyra {
namespace {

using cv::face::LBPHFaceRecognizer;

// Radius 1 with 8 neighbours over an 8 x 8 grid is the classic operator of Ahonen et al., "Face
// Recognition with Local Binary Patterns" (2004).
cv::Ptr<LBPHFaceRecognizer> make_library_model() {
  return LBPHFaceRecognizer::create(1, 8, 8, 8, DBL_MAX);
}

// Keeps OpenCV's model and asks it everything, except for the prediction of pictures that
// local_patterns.hpp knows how to compare.
class FastLbph : public LBPHFaceRecognizer {
 public:
  explicit FastLbph(cv::Ptr<LBPHFaceRecognizer> model) : model_(std::move(model)) {}

  using cv::face::FaceRecognizer::predict;
  void predict(cv::InputArray src, cv::Ptr<cv::face::PredictCollector> collector) const override {
    const cv::Mat picture = src.getMat();
    const cv::Size known_size(kPatternPictureSide, kPatternPictureSide);
    if (known_.empty() || picture.type() != CV_8UC1 || picture.size() != known_size) {
      model_->predict(src, collector);
      return;
    }
    const PatternHistogram probe = pattern_histogram(picture);
    collector->init(known_.size());
    for (std::size_t i = 0; i < known_.size(); ++i) {
      const int label = labels_.at<int>(static_cast<int>(i));
      if (!collector->collect(label, pattern_distance(known_[i], probe))) return;
    }
  }

  void train(cv::InputArrayOfArrays src, cv::InputArray labels) override {
    known_.clear();
    model_->train(src, labels);
    learn_histograms();
  }
  void update(cv::InputArrayOfArrays src, cv::InputArray labels) override {
    known_.clear();
    model_->update(src, labels);
    learn_histograms();
  }
  using cv::face::FaceRecognizer::read;
  void read(const cv::FileNode& node) override {
    known_.clear();
    model_->read(node);
  }

  void setGridX(int cells) override {
    known_.clear();
    model_->setGridX(cells);
  }
  void setGridY(int cells) override {
    known_.clear();
    model_->setGridY(cells);
  }
  void setRadius(int pixels) override {
    known_.clear();
    model_->setRadius(pixels);
  }
  void setNeighbors(int points) override {
    known_.clear();
    model_->setNeighbors(points);
  }
  void setThreshold(double threshold) override { model_->setThreshold(threshold); }

  int getGridX() const override { return model_->getGridX(); }
  int getGridY() const override { return model_->getGridY(); }
  int getRadius() const override { return model_->getRadius(); }
  int getNeighbors() const override { return model_->getNeighbors(); }
  double getThreshold() const override { return model_->getThreshold(); }
  std::vector<cv::Mat> getHistograms() const override { return model_->getHistograms(); }
  cv::Mat getLabels() const override { return model_->getLabels(); }
  bool empty() const override { return model_->empty(); }
  cv::String getDefaultName() const override { return model_->getDefaultName(); }
  using cv::face::FaceRecognizer::write;
  void write(cv::FileStorage& storage) const override { model_->write(storage); }
  void setLabelInfo(int label, const cv::String& info) override {
    model_->setLabelInfo(label, info);
  }
  cv::String getLabelInfo(int label) const override { return model_->getLabelInfo(label); }
  std::vector<int> getLabelsByString(const cv::String& text) const override {
    return model_->getLabelsByString(text);
  }

 private:
  bool has_known_settings() const {
    return getRadius() == 1 && getNeighbors() == 8 && getGridX() == 8 && getGridY() == 8;
  }
  // Not if some samples were added with other settings.
  void learn_histograms() {
    const std::vector<cv::Mat> all = model_->getHistograms();
    const bool comparable = std::all_of(all.begin(), all.end(), [](const cv::Mat& shares) {
      return shares.total() == kPatternBins && cv::checkRange(shares);
    });
    if (!has_known_settings() || !comparable) return;
    labels_ = model_->getLabels();
    for (const cv::Mat& shares : all) known_.push_back(known_pattern_histogram(shares));
  }

  cv::Ptr<LBPHFaceRecognizer> model_;
  std::vector<PatternHistogram> known_;  // of all samples; empty if only `model_` may predict
  cv::Mat labels_;                       // theirs
};

}  // namespace

cv::Ptr<LBPHFaceRecognizer> make_fast_lbph() {
  static const bool kSameNumbers = patterns_match_opencv();
  cv::Ptr<LBPHFaceRecognizer> model = make_library_model();
  if (!kSameNumbers) return model;
  return cv::makePtr<FastLbph>(model);
}

}  // namespace halcyra
