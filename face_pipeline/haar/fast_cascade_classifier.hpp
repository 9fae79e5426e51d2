// A cv::CascadeClassifier that finds what OpenCV's own finds, many times faster.
#pragma once

#include <string>
#include <vector>

#include <opencv2/objdetect.hpp>

#include "face_pipeline/haar/cascade_search.hpp"
#include "face_pipeline/haar/image_pyramid.hpp"
#include "face_pipeline/haar/instruction_set.hpp"
#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

// What cv::CascadeClassifier::detectMultiScale is asked for.
struct DetectionSettings {
  double scale_factor = 1.1;  // above 1
  int min_neighbors = 3;
  cv::Size min_size;
  cv::Size max_size;
};

// Stands behind a cv::CascadeClassifier. Finds the same objects in the same order as OpenCV's
// classifier on one thread; OpenCV itself promises no order on several. Calls that this does not
// cover go to OpenCV's classifier of the same file: pictures in colour or not in a cv::Mat,
// pictures smaller than the window, mask generators and the variant with reject levels. Like
// OpenCV's, for one call at a time.
class FastCascadeClassifier final : public cv::BaseCascadeClassifier {
 public:
  // `original` is OpenCV's classifier, loaded from the file that `cascade` was read from.
  FastCascadeClassifier(cv::Ptr<cv::BaseCascadeClassifier> original, StumpCascade cascade,
                        InstructionSet instructions);

  // The objects in the pyramid's picture or, mirrored, in its mirror image, as
  // cv::CascadeClassifier::detectMultiScale finds them. The classifier's own pyramid may be used.
  std::vector<cv::Rect> detect(ImagePyramid& pyramid, Facing facing,
                               const DetectionSettings& settings);

  // Whether detect may be called with Facing::kMirrored for such a picture.
  bool can_mirror(const cv::Size& picture, const DetectionSettings& settings) const;

  ImagePyramid& pyramid() { return pyramid_; }
  const cv::Size& window() const { return search_.window(); }

  bool empty() const override;
  bool load(const cv::String& filename) override;
  void detectMultiScale(cv::InputArray image, std::vector<cv::Rect>& objects, double scale_factor,
                        int min_neighbors, int flags, cv::Size min_size,
                        cv::Size max_size) override;
  void detectMultiScale(cv::InputArray image, std::vector<cv::Rect>& objects,
                        std::vector<int>& num_detections, double scale_factor, int min_neighbors,
                        int flags, cv::Size min_size, cv::Size max_size) override;
  void detectMultiScale(cv::InputArray image, std::vector<cv::Rect>& objects,
                        std::vector<int>& reject_levels, std::vector<double>& level_weights,
                        double scale_factor, int min_neighbors, int flags, cv::Size min_size,
                        cv::Size max_size, bool output_reject_levels) override;
  bool isOldFormatCascade() const override;
  cv::Size getOriginalWindowSize() const override;
  int getFeatureType() const override;
  void* getOldCascade() override;
  void setMaskGenerator(const cv::Ptr<MaskGenerator>& generator) override;
  cv::Ptr<MaskGenerator> getMaskGenerator() override;

 private:
  bool covers(cv::InputArray image, double scale_factor) const;
  std::vector<cv::Rect> candidates(ImagePyramid& pyramid, Facing facing,
                                   const DetectionSettings& settings);

  cv::Ptr<cv::BaseCascadeClassifier> original_;
  CascadeSearch search_;
  ImagePyramid pyramid_;
};

// Like classifier.load(path), with its answers and its exceptions. Afterwards a
// FastCascadeClassifier stands behind the classifier if it covers the file's cascade, otherwise
// OpenCV's own.
bool load_fast_cascade(cv::CascadeClassifier& classifier, const std::string& path);
bool load_fast_cascade(cv::CascadeClassifier& classifier, const std::string& path,
                       InstructionSet instructions);

// What stands behind the classifier, or null if that is OpenCV's own or nothing.
FastCascadeClassifier* fast_cascade(const cv::CascadeClassifier& classifier);

}  // namespace halcyra::haar
