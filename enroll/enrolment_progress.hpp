// How far a live enrolment has come.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "enroll/pose.hpp"

namespace halcyra {

using EnrolmentTime = std::chrono::steady_clock::time_point;

struct PoseProgress {
  std::int32_t taken = 0;  // samples of this run that have not been taken back
  bool skipped = false;    // the person went on to the next pose
};

struct EnrolmentProgress {
  std::int32_t per_pose = 10;                     // samples wanted of each pose, 1 or more
  std::array<PoseProgress, kPoses.size()> poses;  // in the order of kPoses
  bool paused = false;
  std::string write_failure;  // why no more samples are taken; empty while they can be written
  std::optional<EnrolmentTime> first_picture;  // when the run got its first colour picture
  std::optional<EnrolmentTime> last_picture;
  std::optional<EnrolmentTime> last_taken;
};

PoseProgress& progress_of(EnrolmentProgress& progress, Pose pose);
const PoseProgress& progress_of(const EnrolmentProgress& progress, Pose pose);

// Whether more samples of the pose are wanted.
bool is_wanted(const EnrolmentProgress& progress, Pose pose);

// The pose that the person is asked for: the first wanted one of kPoses; nothing if none is wanted.
std::optional<Pose> asked_pose(const EnrolmentProgress& progress);

}  // namespace halcyra
