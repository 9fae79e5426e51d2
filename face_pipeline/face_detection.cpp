#include "face_pipeline/face_detection.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include <opencv2/imgproc.hpp>

#include "face_pipeline/detection_merge.hpp"

namespace halcyra {
namespace {

bool style_includes(const Options& options, const std::string& pass) {
  return options.detector_type == pass || options.detector_type == "frontal_or_profile";
}

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

// Faces looking to the other side: the profile cascade on the mirrored image.
std::vector<cv::Rect> detect_mirrored(cv::CascadeClassifier& profile, const cv::Mat& grey,
                                      const Options& options) {
  cv::Mat mirrored;
  cv::flip(grey, mirrored, 1);
  std::vector<cv::Rect> boxes = detect_faces(profile, mirrored, options);
  for (cv::Rect& box : boxes) box.x = grey.cols - box.x - box.width;
  return boxes;
}

}  // namespace

std::vector<cv::Rect> detect_faces(cv::CascadeClassifier& cascade, const cv::Mat& grey,
                                   const Options& options) {
  const cv::Mat working = working_image(grey, options);
  const int least = std::max(1, scaled(options.min_face_size, options.detect_scale));
  std::vector<cv::Rect> boxes;
  cascade.detectMultiScale(working, boxes, options.scale_factor, options.min_neighbors, 0,
                           cv::Size(least, least), cv::Size(0, 0));
  const double inverse = 1.0 / options.detect_scale;
  for (cv::Rect& box : boxes) box = scaled(box, inverse);
  return boxes;
}

std::vector<Detection> detect_multi(cv::CascadeClassifier& frontal, cv::CascadeClassifier* profile,
                                    const cv::Mat& grey, const Options& options) {
  std::vector<Detection> detections;
  if (style_includes(options, "frontal")) {
    append(detections, detect_faces(frontal, grey, options), "frontal");
  }
  if (profile != nullptr && style_includes(options, "profile_left")) {
    append(detections, detect_faces(*profile, grey, options), "profile_left");
  }
  if (profile != nullptr && style_includes(options, "profile_right")) {
    append(detections, detect_mirrored(*profile, grey, options), "profile_right");
  }
  return dedupe(std::move(detections));
}

}  // namespace halcyra
