// The poses that samples of the owner are taken in.
#pragma once

#include <array>
#include <optional>
#include <string>

namespace halcyra {

// By what the camera sees: the face from the front, its left cheek or its right one.
enum class Pose { kFront, kLeft, kRight };

constexpr std::array<Pose, 3> kPoses = {Pose::kFront, Pose::kLeft, Pose::kRight};

// "front", "left" or "right": the name of the folder that the pose's samples are in.
std::string stage_name(Pose pose);

// The pose in which a face was found, by the detector type of its FaceInfo; nothing for any other
// text.
std::optional<Pose> pose_found_by(const std::string& detector_type);

}  // namespace halcyra
