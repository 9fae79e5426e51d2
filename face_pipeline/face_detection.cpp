#include "face_pipeline/face_detection.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include <opencv2/imgproc.hpp>

#include "face_pipeline/detection_merge.hpp"
#include "face_pipeline/haar/fast_cascade_classifier.hpp"
#include "face_pipeline/haar/image_pyramid.hpp"

namespace halcyra {
namespace {

bool style_includes(const Options& options, const std::string& pass) {
  return options.detector_type == pass || options.detector_type == "frontal_or_profile";
}

// Equalised. Shares the pixels of `grey` at full scale.
cv::Mat working_image(const cv::Mat& grey, const Options& options) {
  cv::Mat working;
  if (options.detect_scale < 1.0) {
    cv::resize(grey, working, cv::Size(0, 0), options.detect_scale, options.detect_scale,
               cv::INTER_AREA);
  } else {
    working = grey;
  }
  cv::equalizeHist(working, working);
  return working;
}

int scaled(int value, double factor) { return static_cast<int>(value * factor); }

cv::Rect scaled(const cv::Rect& box, double factor) {
  return {scaled(box.x, factor), scaled(box.y, factor), scaled(box.width, factor),
          scaled(box.height, factor)};
}

void append(std::vector<Detection>& detections, const std::vector<cv::Rect>& boxes,
            const std::string& detector_type) {
  for (const cv::Rect& box : boxes) detections.push_back({box, detector_type});
}

haar::DetectionSettings settings_for(const Options& options) {
  const int least = std::max(1, scaled(options.min_face_size, options.detect_scale));
  return {options.scale_factor, options.min_neighbors, cv::Size(least, least), cv::Size()};
}

void scale_back(std::vector<cv::Rect>& boxes, const Options& options) {
  const double inverse = 1.0 / options.detect_scale;
  for (cv::Rect& box : boxes) box = scaled(box, inverse);
}

std::vector<cv::Rect> detect_faces_mirrored(cv::CascadeClassifier& cascade, const cv::Mat& grey,
                                            const Options& options) {
  cv::Mat mirrored;
  cv::flip(grey, mirrored, 1);
  return detect_faces(cascade, mirrored, options);
}

// Whether shrinking and equalising the mirrored picture gives the mirror image of the shrunken and
// equalised one. It does where each pixel comes from a square of four; other sizes and scales
// weight pixels with floats, whose sums depend on their order.
bool shrinking_mirrors_exactly(const cv::Mat& grey, const Options& options) {
  return options.detect_scale == 0.5 && grey.cols % 2 == 0 && grey.rows % 2 == 0;
}

// The passes over one picture. As many of them as can share its shrunken copy and all that is made
// of that.
class Passes {
 public:
  Passes(const cv::Mat& grey, const Options& options) : grey_(grey), options_(options) {}
  ~Passes() {
    if (pyramid_ != nullptr) pyramid_->forget_picture();
  }
  Passes(const Passes&) = delete;
  Passes& operator=(const Passes&) = delete;

  // Boxes in the picture as it is or, mirrored, in its mirror image.
  std::vector<cv::Rect> boxes(cv::CascadeClassifier& cascade, haar::Facing facing) {
    haar::FastCascadeClassifier* const fast = haar::fast_cascade(cascade);
    if (fast != nullptr && may_share(*fast, facing)) return shared_boxes(*fast, facing);
    return facing == haar::Facing::kMirrored ? detect_faces_mirrored(cascade, grey_, options_)
                                             : detect_faces(cascade, grey_, options_);
  }

 private:
  // Not at full scale, where every pass equalises the caller's pixels anew.
  bool may_share(const haar::FastCascadeClassifier& cascade, haar::Facing facing) const {
    if (!(options_.detect_scale < 1.0) || !(options_.scale_factor > 1.0)) return false;
    if (facing == haar::Facing::kAsIs) return true;
    return shrinking_mirrors_exactly(grey_, options_) &&
           cascade.can_mirror(grey_.size() / 2, settings_for(options_));
  }

  std::vector<cv::Rect> shared_boxes(haar::FastCascadeClassifier& cascade, haar::Facing facing) {
    if (pyramid_ == nullptr) make_pyramid(cascade.pyramid());
    std::vector<cv::Rect> boxes = cascade.detect(*pyramid_, facing, settings_for(options_));
    scale_back(boxes, options_);
    return boxes;
  }

  // That of the first cascade serves all.
  void make_pyramid(haar::ImagePyramid& pyramid) {
    pyramid.set_picture(working_image(grey_, options_));
    pyramid_ = &pyramid;
  }

  const cv::Mat& grey_;
  const Options& options_;
  haar::ImagePyramid* pyramid_ = nullptr;
};

// Faces looking to the other side: the profile cascade on the mirrored image.
std::vector<cv::Rect> detect_mirrored(Passes& passes, cv::CascadeClassifier& profile, int columns) {
  std::vector<cv::Rect> boxes = passes.boxes(profile, haar::Facing::kMirrored);
  for (cv::Rect& box : boxes) box.x = columns - box.x - box.width;
  return boxes;
}

}  // namespace

std::vector<cv::Rect> detect_faces(cv::CascadeClassifier& cascade, const cv::Mat& grey,
                                   const Options& options) {
  const cv::Mat working = working_image(grey, options);
  const haar::DetectionSettings settings = settings_for(options);
  std::vector<cv::Rect> boxes;
  cascade.detectMultiScale(working, boxes, settings.scale_factor, settings.min_neighbors, 0,
                           settings.min_size, settings.max_size);
  scale_back(boxes, options);
  return boxes;
}

std::vector<Detection> detect_multi(cv::CascadeClassifier& frontal, cv::CascadeClassifier* profile,
                                    const cv::Mat& grey, const Options& options) {
  Passes passes(grey, options);
  std::vector<Detection> detections;
  if (style_includes(options, "frontal")) {
    append(detections, passes.boxes(frontal, haar::Facing::kAsIs), "frontal");
  }
  if (profile != nullptr && style_includes(options, "profile_left")) {
    append(detections, passes.boxes(*profile, haar::Facing::kAsIs), "profile_left");
  }
  if (profile != nullptr && style_includes(options, "profile_right")) {
    append(detections, detect_mirrored(passes, *profile, grey.cols), "profile_right");
  }
  return dedupe(std::move(detections));
}

}  // namespace halcyra
