#include "face_pipeline/face_detectors.hpp"

#include "app/run_state/event_log.hpp"
#include "app/run_state/runtime_status.hpp"
#include "face_pipeline/haar/fast_cascade_classifier.hpp"

namespace halcyra {

void load_detectors(FaceDetectors& detectors, const Options& options, RuntimeStatus& status) {
  status.frontal_cascade_loaded = haar::load_fast_cascade(detectors.frontal, options.cascade_path);
  status.profile_cascade_loaded =
      haar::load_fast_cascade(detectors.profile, options.profile_cascade_path);
  if (!status.frontal_cascade_loaded) add_event(status, "Frontal cascade unavailable");
  if (!status.profile_cascade_loaded) {
    add_event(status, "Profile cascade unavailable; profile detection fallback");
  }
}

}  // namespace halcyra
