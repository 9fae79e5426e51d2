#include "face_pipeline/face_detection.hpp"

#include <algorithm>
#include <cstddef>
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

struct Pass {
  cv::CascadeClassifier* cascade = nullptr;
  haar::Facing facing = haar::Facing::kAsIs;
  std::string detector_type;
  std::vector<cv::Rect> boxes;  // in the picture as it is or, mirrored, in its mirror image
};

std::vector<Pass> passes_for(cv::CascadeClassifier& frontal, cv::CascadeClassifier* profile,
                             const Options& options) {
  std::vector<Pass> passes;
  if (style_includes(options, "frontal")) {
    passes.push_back({&frontal, haar::Facing::kAsIs, "frontal", {}});
  }
  if (profile != nullptr && style_includes(options, "profile_left")) {
    passes.push_back({profile, haar::Facing::kAsIs, "profile_left", {}});
  }
  // Faces looking to the other side: the profile cascade on the mirrored image.
  if (profile != nullptr && style_includes(options, "profile_right")) {
    passes.push_back({profile, haar::Facing::kMirrored, "profile_right", {}});
  }
  return passes;
}

// Whether the pass may share the shrunken picture, and all that is made of it, with others. Not at
// full scale, where every pass equalises the caller's pixels anew.
bool may_share(const Pass& pass, const cv::Mat& grey, const Options& options) {
  const haar::FastCascadeClassifier* const fast = haar::fast_cascade(*pass.cascade);
  if (fast == nullptr || !(options.detect_scale < 1.0) || !(options.scale_factor > 1.0)) {
    return false;
  }
  if (pass.facing == haar::Facing::kAsIs) return true;
  return shrinking_mirrors_exactly(grey, options) &&
         fast->can_mirror(grey.size() / 2, settings_for(options));
}

// The first cascade's pyramid, which serves all.
class SharedPyramid {
 public:
  SharedPyramid(haar::ImagePyramid& pyramid, const cv::Mat& picture) : pyramid_(pyramid) {
    pyramid_.set_picture(picture);
  }
  ~SharedPyramid() { pyramid_.forget_picture(); }
  SharedPyramid(const SharedPyramid&) = delete;
  SharedPyramid& operator=(const SharedPyramid&) = delete;

  haar::ImagePyramid& get() { return pyramid_; }

 private:
  haar::ImagePyramid& pyramid_;
};

void run_together(const std::vector<Pass*>& passes, const cv::Mat& grey, const Options& options) {
  if (passes.empty()) return;
  std::vector<haar::DetectionPass> searches;
  searches.reserve(passes.size());
  for (const Pass* pass : passes) {
    searches.push_back({haar::fast_cascade(*pass->cascade), pass->facing});
  }
  SharedPyramid pyramid(searches.front().cascade->pyramid(), working_image(grey, options));
  std::vector<std::vector<cv::Rect>> found =
      haar::detect_together(pyramid.get(), searches, settings_for(options));
  for (std::size_t i = 0; i < passes.size(); ++i) {
    passes[i]->boxes = std::move(found[i]);
    scale_back(passes[i]->boxes, options);
  }
}

void run_alone(Pass& pass, const cv::Mat& grey, const Options& options) {
  const bool mirrored = pass.facing == haar::Facing::kMirrored;
  pass.boxes = mirrored ? detect_faces_mirrored(*pass.cascade, grey, options)
                        : detect_faces(*pass.cascade, grey, options);
}

void turn_back(std::vector<cv::Rect>& boxes, int columns) {
  for (cv::Rect& box : boxes) box.x = columns - box.x - box.width;
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
  std::vector<Pass> passes = passes_for(frontal, profile, options);
  std::vector<Pass*> together;
  for (Pass& pass : passes) {
    if (may_share(pass, grey, options)) {
      together.push_back(&pass);
    } else {
      run_alone(pass, grey, options);
    }
  }
  run_together(together, grey, options);
  std::vector<Detection> detections;
  for (Pass& pass : passes) {
    if (pass.facing == haar::Facing::kMirrored) turn_back(pass.boxes, grey.cols);
    append(detections, pass.boxes, pass.detector_type);
  }
  return dedupe(std::move(detections));
}

}  // namespace halcyra
