#include "enroll/enrolment_progress.hpp"

namespace halcyra {

PoseProgress& progress_of(EnrolmentProgress& progress, Pose pose) {
  return progress.poses.at(static_cast<std::size_t>(pose));
}

const PoseProgress& progress_of(const EnrolmentProgress& progress, Pose pose) {
  return progress.poses.at(static_cast<std::size_t>(pose));
}

bool is_wanted(const EnrolmentProgress& progress, Pose pose) {
  const PoseProgress& one = progress_of(progress, pose);
  return !one.skipped && one.taken < progress.per_pose;
}

std::optional<Pose> asked_pose(const EnrolmentProgress& progress) {
  for (const Pose pose : kPoses) {
    if (is_wanted(progress, pose)) return pose;
  }
  return std::nullopt;
}

}  // namespace halcyra
