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

// Loads both cascades, sets `frontal_cascade_loaded` and `profile_cascade_loaded` and logs
// "Frontal cascade unavailable" and "Profile cascade unavailable; profile detection fallback" for
// files that cannot be opened. A file that opens but is no cascade makes OpenCV throw.
void load_detectors(FaceDetectors& detectors, const Options& options, RuntimeStatus& status);

}  // namespace halcyra
