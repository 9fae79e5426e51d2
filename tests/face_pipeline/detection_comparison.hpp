// Compares and prints detections.
#pragma once

#include <ostream>

#include <opencv2/core.hpp>

#include "face_pipeline/detection.hpp"

namespace halcyra {

inline bool operator==(const Detection& a, const Detection& b) {
  return a.box == b.box && a.detector_type == b.detector_type;
}

inline std::ostream& operator<<(std::ostream& out, const Detection& detection) {
  return out << detection.detector_type << " " << detection.box;
}

}  // namespace halcyra
