// Moments of a live enrolment, as tests need them.
#pragma once

#include <chrono>
#include <string>

#include "enroll/enrolment_progress.hpp"
#include "enroll/sample_taker.hpp"

namespace halcyra {

// An arbitrary time for the clock to show.
constexpr EnrolmentTime kNow{std::chrono::hours(1)};

// Ten samples wanted of each pose, none taken, pictures for a minute, the last one just now.
inline EnrolmentProgress running_enrolment() {
  EnrolmentProgress progress;
  progress.per_pose = 10;
  progress.first_picture = kNow - std::chrono::minutes(1);
  progress.last_picture = kNow;
  return progress;
}

// A face that meets every limit, found by the detector.
inline FaceInfo good_face(const std::string& detector_type = "frontal") {
  FaceInfo face;
  face.box = {100, 100, 120, 120};
  face.detector_type = detector_type;
  face.quality = "accepted";
  face.brightness = 128.2;
  face.contrast = 43.9;
  face.sharpness = 143.7;
  return face;
}

inline Observation observation_of(const FaceInfo& face) {
  Observation observation;
  observation.faces = {face};
  return observation;
}

}  // namespace halcyra
