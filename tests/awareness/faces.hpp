// Faces and voices as input of the room awareness.
#pragma once

#include <string>
#include <vector>

#include "app/run_state/runtime_status.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

using Faces = std::vector<FaceInfo>;

inline FaceInfo face(int person_id, const std::string& label = "Unknown", int x = 0,
                     int width = 0) {
  FaceInfo face;
  face.box = {x, 10, width, 40};
  face.person_id = person_id;
  face.label = label;
  return face;
}

inline void hear(RuntimeStatus& status, const std::string& angle, const std::string& confidence,
                 bool low_confidence = false) {
  status.voice.direction_angle = angle;
  status.voice.direction_confidence = confidence;
  status.voice.direction_low_confidence = low_confidence;
}

}  // namespace halcyra
