#include "enroll/pose.hpp"

namespace halcyra {

std::string stage_name(Pose pose) {
  switch (pose) {
    case Pose::kFront:
      return "front";
    case Pose::kLeft:
      return "left";
    case Pose::kRight:
      return "right";
  }
  return "flat";
}

// The profile cascade finds faces that look to the picture's left; they show their left cheek.
std::optional<Pose> pose_found_by(const std::string& detector_type) {
  if (detector_type == "frontal") return Pose::kFront;
  if (detector_type == "profile_left") return Pose::kLeft;
  if (detector_type == "profile_right") return Pose::kRight;
  return std::nullopt;
}

}  // namespace halcyra
