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

  // The sample that makes the face a near-copy: one with the same pixels, else the nearest if it is
  // nearer than kNearCopyDistance. Nothing if the face would be something new. A crop is up to 38
  // from its own sample, as faces are equalised before they are compared and samples are not; so
  // the distance alone would miss some copies.
  std::optional<NearestSample> near_copy(const cv::Mat& crop) const;

  // The distance of a face, given as make_probe returns it, to each sample, by index.
  std::vector<double> distances(const cv::Mat& probe) const;

 private:
  // One class for each sample, so that the model tells the distance to each of them.
  std::vector<TrainingSample> samples_;
  cv::Ptr<cv::face::LBPHFaceRecognizer> model_;  // null without samples
};

}  // namespace halcyra
