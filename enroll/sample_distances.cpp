#include "enroll/sample_distances.hpp"

#include <algorithm>

#include <opencv2/core.hpp>

#include "enroll/sample_limits.hpp"
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
  const std::vector<double> all = distances(make_probe(crop));
  std::optional<NearestSample> best;
  for (std::size_t candidate = 0; candidate < all.size(); ++candidate) {
    if (candidate == index) continue;
    if (!best || all[candidate] < best->distance) best = NearestSample{candidate, all[candidate]};
  }
  return best;
}

std::optional<NearestSample> SampleDistances::near_copy(const cv::Mat& crop) const {
  const std::vector<double> all = distances(make_probe(crop));
  const cv::Mat image = make_sample(crop, {}).image;
  for (std::size_t index = 0; index < samples_.size(); ++index) {
    const bool same = cv::norm(samples_[index].image, image, cv::NORM_INF) == 0;
    if (same) return NearestSample{index, all[index]};
  }
  const auto best = std::min_element(all.begin(), all.end());
  if (best == all.end() || *best >= kNearCopyDistance) return std::nullopt;
  return NearestSample{static_cast<std::size_t>(best - all.begin()), *best};
}

std::vector<double> SampleDistances::distances(const cv::Mat& probe) const {
  std::vector<double> all(samples_.size());
  if (model_.empty()) return all;
  const auto collector = cv::face::StandardCollector::create();
  model_->predict(probe, collector);
  for (const auto& [label, distance] : collector->getResults(false)) {
    all[static_cast<std::size_t>(label)] = distance;
  }
  return all;
}

}  // namespace halcyra
