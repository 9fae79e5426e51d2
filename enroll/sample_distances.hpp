// How far faces are from the samples, measured as the dashboard measures it when it recognises.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <opencv2/core/mat.hpp>
#include <opencv2/face.hpp>

#include "face_pipeline/training_sample.hpp"

namespace halcyra {

struct NearestSample {
  std::size_t index;  // in the order in which the samples were added
  double distance;    // LBPH distance, 0 or more; lower is nearer
};

class SampleDistances {
 public:
  // `picture` is the 8-bit grey crop of a face, of any size.
  void add(const cv::Mat& picture);

  // Forgets the sample that was added last; there must be one.
  void remove_last();

  std::size_t size() const { return samples_.size(); }

  // The sample nearest to a face, given as its 8-bit grey crop; nothing without samples.
  std::optional<NearestSample> nearest(const cv::Mat& crop) const;

  // The same among all samples but the one with that index; nothing if there is no other. This is
  // leave-one-out: what the recogniser would say of the sample if it were the face in view.
  std::optional<NearestSample> nearest_other(const cv::Mat& crop, std::size_t index) const;

 private:
  // One class for each sample, so that the model tells the distance to each of them.
  std::vector<TrainingSample> samples_;
  cv::Ptr<cv::face::LBPHFaceRecognizer> model_;  // null without samples
};

}  // namespace halcyra
