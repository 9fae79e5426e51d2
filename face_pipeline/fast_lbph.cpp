#include "face_pipeline/fast_lbph.hpp"

#include <algorithm>
#include <cfloat>
#include <cstddef>
#include <mutex>
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

// Samples that OpenCV's model is to be trained with, when it is asked for the first time.
struct Untrained {
  std::vector<cv::Mat> pictures;
  std::vector<int> labels;
};

bool has_known_form(const cv::Mat& picture) {
  return picture.type() == CV_8UC1 &&
         picture.size() == cv::Size(kPatternPictureSide, kPatternPictureSide);
}

// The samples, if local_patterns.hpp knows how to compare all of them; otherwise none.
Untrained known_samples(cv::InputArrayOfArrays src, cv::InputArray labels) {
  if (src.kind() != cv::_InputArray::STD_VECTOR_MAT) return {};
  Untrained samples;
  src.getMatVector(samples.pictures);
  const cv::Mat numbers = labels.getMat();
  const bool each_has_a_label =
      numbers.type() == CV_32SC1 && numbers.total() == samples.pictures.size();
  const bool comparable =
      std::all_of(samples.pictures.begin(), samples.pictures.end(), has_known_form);
  if (!each_has_a_label || !comparable) return {};
  samples.labels.assign(numbers.begin<int>(), numbers.end<int>());
  return samples;
}

// Trains with pictures that local_patterns.hpp knows how to compare, and predicts them. Everything
// else it leaves to OpenCV's model, which takes ten times as long to train. So that is trained only
// when something is asked of it.
class FastLbph : public LBPHFaceRecognizer {
 public:
  explicit FastLbph(cv::Ptr<LBPHFaceRecognizer> model) : model_(std::move(model)) {}

  using cv::face::FaceRecognizer::predict;
  void predict(cv::InputArray src, cv::Ptr<cv::face::PredictCollector> collector) const override {
    const cv::Mat picture = src.getMat();
    if (known_.empty() || !has_known_form(picture)) {
      model().predict(src, collector);
      return;
    }
    const PatternHistogram probe = pattern_histogram(picture);
    collector->init(known_.size());
    for (std::size_t i = 0; i < known_.size(); ++i) {
      if (!collector->collect(labels_[i], pattern_distance(known_[i], probe))) return;
    }
  }

  void train(cv::InputArrayOfArrays src, cv::InputArray labels) override {
    known_.clear();
    untrained_ = has_known_settings() ? known_samples(src, labels) : Untrained{};
    if (untrained_.pictures.empty()) {
      model_->train(src, labels);
      learn_histograms();
      return;
    }
    labels_ = untrained_.labels;
    for (const cv::Mat& picture : untrained_.pictures) known_.push_back(pattern_histogram(picture));
  }
  void update(cv::InputArrayOfArrays src, cv::InputArray labels) override {
    changing_model().update(src, labels);
    learn_histograms();
  }
  using cv::face::FaceRecognizer::read;
  void read(const cv::FileNode& node) override { changing_model().read(node); }

  void setGridX(int cells) override { changing_model().setGridX(cells); }
  void setGridY(int cells) override { changing_model().setGridY(cells); }
  void setRadius(int pixels) override { changing_model().setRadius(pixels); }
  void setNeighbors(int points) override { changing_model().setNeighbors(points); }
  void setThreshold(double threshold) override { model_->setThreshold(threshold); }

  int getGridX() const override { return model_->getGridX(); }
  int getGridY() const override { return model_->getGridY(); }
  int getRadius() const override { return model_->getRadius(); }
  int getNeighbors() const override { return model_->getNeighbors(); }
  double getThreshold() const override { return model_->getThreshold(); }
  std::vector<cv::Mat> getHistograms() const override { return model().getHistograms(); }
  cv::Mat getLabels() const override { return model().getLabels(); }
  bool empty() const override { return known_.empty() && model_->empty(); }
  cv::String getDefaultName() const override { return model_->getDefaultName(); }
  using cv::face::FaceRecognizer::write;
  void write(cv::FileStorage& storage) const override { model().write(storage); }
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
  // OpenCV's model, trained.
  LBPHFaceRecognizer& model() const {
    const std::lock_guard lock(training_);
    if (!untrained_.pictures.empty()) model_->train(untrained_.pictures, untrained_.labels);
    untrained_ = {};
    return *model_;
  }
  // The same, to be changed, after which only it may predict.
  LBPHFaceRecognizer& changing_model() {
    known_.clear();
    return model();
  }
  // Not if some samples were added with other settings.
  void learn_histograms() {
    const std::vector<cv::Mat> all = model_->getHistograms();
    const bool comparable = std::all_of(all.begin(), all.end(), [](const cv::Mat& shares) {
      return shares.total() == kPatternBins && cv::checkRange(shares);
    });
    if (!has_known_settings() || !comparable) return;
    const cv::Mat labels = model_->getLabels();
    labels_.assign(labels.begin<int>(), labels.end<int>());
    for (const cv::Mat& shares : all) known_.push_back(known_pattern_histogram(shares));
  }

  const cv::Ptr<LBPHFaceRecognizer> model_;
  mutable std::mutex training_;  // of `model_`, by the first thread that needs it
  mutable Untrained untrained_;
  std::vector<PatternHistogram> known_;  // of all samples; empty if only `model_` may predict
  std::vector<int> labels_;              // theirs
};

}  // namespace

cv::Ptr<LBPHFaceRecognizer> make_fast_lbph() {
  static const bool kSameNumbers = patterns_match_opencv();
  cv::Ptr<LBPHFaceRecognizer> model = make_library_model();
  if (!kSameNumbers) return model;
  return cv::makePtr<FastLbph>(model);
}

}  // namespace halcyra
