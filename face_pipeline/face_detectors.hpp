// The two face cascades of a run and how they are loaded.
#pragma once

#include <opencv2/objdetect.hpp>

#include "app/run_state/options.hpp"

namespace halcyra {

struct RuntimeStatus;

struct FaceDetectors {
  cv::CascadeClassifier frontal;
  cv::CascadeClassifier profile;  // faces looking to one side; the mirrored pass finds the other
};

// Loads both cascades and sets `frontal_cascade_loaded` and `profile_cascade_loaded`. The fast
// search or OpenCV's own stands behind them, as the build was configured; both find the same. For a
// file that cannot be loaded it logs "Frontal cascade unavailable" or "Profile cascade unavailable;
// profile detection fallback". OpenCV throws for most files that open but hold no cascade.
void load_detectors(FaceDetectors& detectors, const Options& options, RuntimeStatus& status);

}  // namespace halcyra
