#include "enroll/sample_distances.hpp"

#include "face_pipeline/lbph_model.hpp"
#include "face_pipeline/sample_loader.hpp"

namespace halcyra {
namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

}  // namespace

void SampleDistances::add(const cv::Mat& picture) {
  TrainingSample sample = make_sample(picture, {});
  sample.label = static_cast<int>(samples_.size());
  samples_.push_back(sample);
  if (model_.empty()) {
    model_ = train_model(samples_);
  } else {
    model_->update(std::vector<cv::Mat>{sample.image}, std::vector<int>{sample.label});
  }
}

void SampleDistances::remove_last() {
  samples_.pop_back();
  model_ = samples_.empty() ? nullptr : train_model(samples_);
}

std::optional<NearestSample> SampleDistances::nearest(const cv::Mat& crop) const {
  return nearest_other(crop, kNone);
}

std::optional<NearestSample> SampleDistances::nearest_other(const cv::Mat& crop,
                                                            std::size_t index) const {
  if (model_.empty()) return std::nullopt;
  const auto collector = cv::face::StandardCollector::create();
  model_->predict(make_probe(crop), collector);
  std::optional<NearestSample> best;
  for (const auto& [label, distance] : collector->getResults(false)) {
    const auto candidate = static_cast<std::size_t>(label);
    if (candidate == index) continue;
    if (!best || distance < best->distance) best = NearestSample{candidate, distance};
  }
  return best;
}

}  // namespace halcyra
