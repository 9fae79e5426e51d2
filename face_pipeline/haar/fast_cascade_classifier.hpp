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

// The arguments of cv::CascadeClassifier::detectMultiScale, with its defaults. A size with a side
// of 0 is no limit.
struct DetectionSettings {
  double scale_factor = 1.1;  // above 1
  int min_neighbors = 3;
  cv::Size min_size;
  cv::Size max_size;
};

// The implementation behind a cv::CascadeClassifier. Finds the same objects in the same order as
// OpenCV's classifier does on one thread; on several, OpenCV's own order varies. Calls that this
// does not cover are passed on to OpenCV's classifier of the same file: pictures in colour or not
// in a cv::Mat, scale factors that are not above 1, mask generators, and the overload with reject
// levels. Like OpenCV's, it serves one call at a time.
class FastCascadeClassifier final : public cv::BaseCascadeClassifier {
 public:
  // `original` is OpenCV's classifier, loaded from the file that `cascade` was read from.
  FastCascadeClassifier(cv::Ptr<cv::BaseCascadeClassifier> original, StumpCascade cascade,
                        InstructionSet instructions);

  // A pass of detect_together on its own.
  std::vector<cv::Rect> detect(ImagePyramid& pyramid, Facing facing,
                               const DetectionSettings& settings);

  // Whether Facing::kMirrored is possible for a picture of this size.
  bool can_mirror(const cv::Size& picture, const DetectionSettings& settings) const;

  ImagePyramid& pyramid() { return pyramid_; }
  CascadeSearch& search() { return search_; }
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
  void find_candidates(const cv::Mat& picture, const DetectionSettings& settings,
                       std::vector<cv::Rect>& objects);

  cv::Ptr<cv::BaseCascadeClassifier> original_;
  CascadeSearch search_;
  ImagePyramid pyramid_;
};

// One pass over a picture.
struct DetectionPass {
  FastCascadeClassifier* cascade = nullptr;
  Facing facing = Facing::kAsIs;
};

// For each pass, the objects in the pyramid's picture or its mirror image, in pixels of either, as
// cv::CascadeClassifier::detectMultiScale finds them; none if the picture is smaller than the
// window. Faster than pass after pass. `pyramid` may be that of a cascade. Mask generators have no
// effect here.
std::vector<std::vector<cv::Rect>> detect_together(ImagePyramid& pyramid,
                                                   const std::vector<DetectionPass>& passes,
                                                   const DetectionSettings& settings);

// classifier.load(path), with its answer and its exceptions. If it succeeds and the file's cascade
// is covered, a FastCascadeClassifier stands behind `classifier` afterwards, otherwise OpenCV's
// own. It uses the given instruction set, which must be available, or else the last available one.
// OpenCV's classifier of a covered cascade is loaded when a call first needs it, so the file has to
// stay where it is.
bool load_fast_cascade(cv::CascadeClassifier& classifier, const std::string& path);
bool load_fast_cascade(cv::CascadeClassifier& classifier, const std::string& path,
                       InstructionSet instructions);

// The FastCascadeClassifier behind `classifier`; null if there is OpenCV's own or none.
FastCascadeClassifier* fast_cascade(const cv::CascadeClassifier& classifier);

}  // namespace halcyra::haar
