#include "enroll/face_search.hpp"

#include <opencv2/core/base.hpp>
#include <opencv2/core/utils/logger.hpp>

#include "app/run_state/runtime_status.hpp"
#include "face_pipeline/detection.hpp"
#include "face_pipeline/face_analysis.hpp"
#include "face_pipeline/face_detection.hpp"
#include "face_pipeline/recognition_state.hpp"

namespace halcyra {
namespace {

std::string unusable_cascade(const std::string& path) {
  return path + " cannot be used as a face cascade. It is in Debian's package opencv-data.";
}

}  // namespace

// Without the profile cascade two of the three poses could never be found.
bool load_face_search(FaceDetectors& detectors, const Options& options, std::string& complaint) {
  RuntimeStatus status;
  // OpenCV would write a line of its own about a missing file.
  const cv::utils::logging::LogLevel level =
      cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT);
  try {
    load_detectors(detectors, options, status);
  } catch (const cv::Exception&) {
    // OpenCV throws for a file that is no cascade; the status says which one had been loaded.
  }
  cv::utils::logging::setLogLevel(level);
  if (!status.frontal_cascade_loaded) {
    complaint = unusable_cascade(options.cascade_path);
  } else if (!status.profile_cascade_loaded) {
    complaint = unusable_cascade(options.profile_cascade_path);
  }
  return status.frontal_cascade_loaded && status.profile_cascade_loaded;
}

std::vector<FaceInfo> search_faces(FaceDetectors& detectors, const cv::Mat& grey,
                                   const Options& options) {
  // analyze_faces tells what it logs and counts to records of a run; here nobody reads them.
  RuntimeStatus status;
  RecognitionState without_model;
  const std::vector<Detection> detections =
      detect_multi(detectors.frontal, &detectors.profile, grey, options);
  return analyze_faces(detections, grey, without_model, status, options);
}

cv::Mat face_crop(const cv::Mat& grey, const FaceInfo& face) { return grey(face.box).clone(); }

}  // namespace halcyra
