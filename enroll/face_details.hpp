// What the enrolment picture says about the face that may become a sample.
#pragma once

#include <string>
#include <vector>

#include "enroll/sample_taker.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

// One measure beside its limit, for example "sharpness", "43", "at least 60".
struct FaceDetail {
  std::string name;
  std::string value;
  std::string limit;
  bool missed = false;
};

// Size, brightness, contrast, sharpness, pose and, where it is known, the distance to the nearest
// sample, which counts as missed for every near-copy. `face` is the chosen one of the observation.
// Numbers are whole; one that misses its limit is rounded away from it.
std::vector<FaceDetail> face_details(const FaceInfo& face, const EnrolmentProgress& progress,
                                     const Observation& observation);

}  // namespace halcyra
