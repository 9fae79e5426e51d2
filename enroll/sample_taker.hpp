// Decides whether the face in view becomes a sample. Pure: the clock is an argument.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "enroll/enrolment_progress.hpp"
#include "enroll/pose.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

// What the latest colour picture showed.
struct Observation {
  std::vector<FaceInfo> faces;
  // LBPH distance of the chosen face to the nearest sample; nothing without samples, without a face
  // and for a face that the quality gate rejects.
  std::optional<double> nearest;
  bool near_copy = false;  // whether that face would be a near-copy of a sample
};

// Why nothing is taken. In the order in which they are looked for: the first that applies is told.
enum class Obstacle {
  kWriteFailed,    // samples can no longer be written
  kDone,           // no pose is wanted any more
  kNoPicture,      // the sensor has not delivered anything for a second, or never
  kPaused,         // by the person
  kGettingReady,   // the first seconds after the first picture
  kNobody,         // no face in view
  kSeveralPeople,  // more than one
  kPoorQuality,    // the quality gate rejects the face
  kPoseNotWanted,  // its pose has enough samples or was skipped
  kNearCopy,       // almost the same as a sample that is there
  kJustTaken,      // the last sample was taken a moment ago
  kNone,           // the face is taken
};

struct Judgement {
  Obstacle obstacle = Obstacle::kNoPicture;
  std::int32_t seconds_to_wait = 0;  // until the run is ready, rounded up; 0 to 3
};

// The face that is judged: the only one, else the one with the largest box, the first of them if
// several are. Nothing without faces.
std::optional<std::size_t> chosen_face(const std::vector<FaceInfo>& faces);

Judgement judge(const EnrolmentProgress& progress, const Observation& observation,
                EnrolmentTime now);

// Whether the chosen face itself is good: it is taken now or as soon as a moment has passed.
bool face_is_good(const Judgement& judgement);

}  // namespace halcyra
