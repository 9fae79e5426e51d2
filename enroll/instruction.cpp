#include "enroll/instruction.hpp"

#include <optional>

#include "enroll/pose.hpp"

namespace halcyra {
namespace {

std::string instruction_for_pose(const EnrolmentProgress& progress) {
  switch (asked_pose(progress).value_or(Pose::kFront)) {
    case Pose::kLeft:
      return "Turn your head until the camera sees your left cheek";
    case Pose::kRight:
      return "Turn your head until the camera sees your right cheek";
    case Pose::kFront:
      break;
  }
  return "Look into the camera";
}

// Whether the face shows the other cheek than the one that is asked for. Some sensors deliver
// mirrored pictures, in which "left" and "right" mislead; "the other way" never does.
bool shows_other_cheek(const EnrolmentProgress& progress, const Observation& observation) {
  const std::optional<Pose> asked = asked_pose(progress);
  const std::optional<Pose> shown = pose_found_by(observation.faces.front().detector_type);
  return asked && shown && *asked != Pose::kFront && *shown != Pose::kFront && *asked != *shown;
}

std::string instruction_for_quality(const std::string& quality) {
  if (quality == "too_small") return "Come closer";
  if (quality == "too_dark") return "More light, please";
  if (quality == "too_bright") return "Less light, please";
  if (quality == "low_contrast") return "Change the light, please";
  return "Hold still";
}

}  // namespace

std::string instruction(const EnrolmentProgress& progress, const Observation& observation,
                        const Judgement& judgement) {
  switch (judgement.obstacle) {
    case Obstacle::kWriteFailed:
      return progress.write_failure;
    case Obstacle::kDone:
      return "Done";
    case Obstacle::kNoPicture:
      return "Waiting for the sensor";
    case Obstacle::kPaused:
      return "Paused: press space to go on";
    case Obstacle::kGettingReady:
      return "Get ready: " + std::to_string(judgement.seconds_to_wait);
    case Obstacle::kSeveralPeople:
      return "Only one person, please";
    case Obstacle::kPoorQuality:
      return instruction_for_quality(observation.faces.front().quality);
    case Obstacle::kNearCopy:
      return "Move a little";
    case Obstacle::kPoseNotWanted:
      if (shows_other_cheek(progress, observation)) return "Turn your head the other way";
      break;
    case Obstacle::kNobody:
    case Obstacle::kJustTaken:
    case Obstacle::kNone:
      break;
  }
  return instruction_for_pose(progress);
}

}  // namespace halcyra
