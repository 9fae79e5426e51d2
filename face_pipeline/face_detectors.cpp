#include "face_pipeline/face_detectors.hpp"

#include <string>

#include "app/run_state/event_log.hpp"
#include "app/run_state/runtime_status.hpp"
#include "face_pipeline/haar/fast_cascade_classifier.hpp"

namespace halcyra {
namespace {

// Chosen when the build is configured, by the version of OpenCV; see cmake/FaceSearch.cmake.
constexpr bool kFastSearch = HALCYRA_FAST_FACE_SEARCH != 0;

bool load_cascade(cv::CascadeClassifier& classifier, const std::string& path) {
  return kFastSearch ? haar::load_fast_cascade(classifier, path) : classifier.load(path);
}

}  // namespace

void load_detectors(FaceDetectors& detectors, const Options& options, RuntimeStatus& status) {
  status.frontal_cascade_loaded = load_cascade(detectors.frontal, options.cascade_path);
  status.profile_cascade_loaded = load_cascade(detectors.profile, options.profile_cascade_path);
  if (!status.frontal_cascade_loaded) add_event(status, "Frontal cascade unavailable");
  if (!status.profile_cascade_loaded) {
    add_event(status, "Profile cascade unavailable; profile detection fallback");
  }
}

}  // namespace halcyra
