#include "face_pipeline/haar/deferred_cascade.hpp"

#include <utility>

namespace halcyra::haar {

DeferredCascade::DeferredCascade(std::string path, const cv::Size& window)
    : path_(std::move(path)), window_(window) {}

cv::BaseCascadeClassifier& DeferredCascade::loaded() const {
  if (loaded_.empty()) {
    cv::CascadeClassifier classifier;
    if (!classifier.load(path_)) CV_Error(cv::Error::StsObjectNotFound, "cannot load " + path_);
    loaded_ = classifier.cc;
    loaded_->setMaskGenerator(generator_);
  }
  return *loaded_;
}

bool DeferredCascade::load(const cv::String& filename) { return loaded().load(filename); }

void DeferredCascade::detectMultiScale(cv::InputArray image, std::vector<cv::Rect>& objects,
                                       double scale_factor, int min_neighbors, int flags,
                                       cv::Size min_size, cv::Size max_size) {
  loaded().detectMultiScale(image, objects, scale_factor, min_neighbors, flags, min_size, max_size);
}

void DeferredCascade::detectMultiScale(cv::InputArray image, std::vector<cv::Rect>& objects,
                                       std::vector<int>& num_detections, double scale_factor,
                                       int min_neighbors, int flags, cv::Size min_size,
                                       cv::Size max_size) {
  loaded().detectMultiScale(image, objects, num_detections, scale_factor, min_neighbors, flags,
                            min_size, max_size);
}

void DeferredCascade::detectMultiScale(cv::InputArray image, std::vector<cv::Rect>& objects,
                                       std::vector<int>& reject_levels,
                                       std::vector<double>& level_weights, double scale_factor,
                                       int min_neighbors, int flags, cv::Size min_size,
                                       cv::Size max_size, bool output_reject_levels) {
  loaded().detectMultiScale(image, objects, reject_levels, level_weights, scale_factor,
                            min_neighbors, flags, min_size, max_size, output_reject_levels);
}

void DeferredCascade::setMaskGenerator(const cv::Ptr<MaskGenerator>& generator) {
  generator_ = generator;
  if (!loaded_.empty()) loaded_->setMaskGenerator(generator);
}

}  // namespace halcyra::haar
