#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>

#include "app/run_state/runtime_status.hpp"
#include "bench/measurement.hpp"
#include "bench/recorded_frames.hpp"
#include "face_pipeline/face_detection.hpp"
#include "face_pipeline/face_detectors.hpp"

namespace halcyra {
namespace {

FaceDetectors& detectors() {
  static FaceDetectors kDetectors = [] {
    FaceDetectors loaded;
    RuntimeStatus status;
    load_detectors(loaded, Options{}, status);
    return loaded;
  }();
  return kDetectors;
}

void pass(cv::CascadeClassifier& cascade, const cv::Mat& working) {
  std::vector<cv::Rect> boxes;
  cascade.detectMultiScale(working, boxes, 1.1, 4, 0, {15, 15}, {0, 0});
}

// OpenCV's own passes over the shrunken picture.
void library_passes(const cv::Mat& grey, const std::string& style) {
  static cv::CascadeClassifier frontal(Options{}.cascade_path);
  static cv::CascadeClassifier profile(Options{}.profile_cascade_path);
  cv::Mat working;
  cv::resize(grey, working, {}, 0.5, 0.5, cv::INTER_AREA);
  cv::equalizeHist(working, working);
  const bool all = style == "frontal_or_profile";
  if (all || style == "frontal") pass(frontal, working);
  if (all || style == "profile_left") pass(profile, working);
  if (all || style == "profile_right") {
    cv::flip(working, working, 1);
    pass(profile, working);
  }
}

}  // namespace

void measure_face_detection() {
  for (const NamedFrames& named : measured_frames()) {
    cv::Mat grey;
    cv::cvtColor(named.frames.color, grey, cv::COLOR_BGRA2GRAY);
    for (const char* style : {"frontal", "profile_left", "profile_right", "frontal_or_profile"}) {
      Options options;
      options.detector_type = style;
      measure(
          std::string("detect_multi, ") + style, named.name,
          [grey, options] {
            detect_multi(detectors().frontal, &detectors().profile, grey, options);
          },
          [grey, options] { library_passes(grey, options.detector_type); });
    }
  }
}

}  // namespace halcyra
