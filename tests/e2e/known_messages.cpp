#include "tests/e2e/known_messages.hpp"

namespace halcyra {

std::vector<std::string> known_messages() {
  return {
      "Control Center launched",
      "Skeleton unavailable, face fallback active",
      "Voice and Corvane status refreshed",
      "Frontal cascade unavailable",
      "Profile cascade unavailable; profile detection fallback",
      "Recognition samples unavailable",
      "No-camera mode active",
      "No Kinect v2 device detected",
      "Kinect open failed",
      "RGB/IR/Depth stream start failed",
      "RGB/IR/Depth streams started",
      "No person visible",
      "Person appeared: 1",
      "Person disappeared",
      "Multiple people visible",
      "Dorran visible",
      "Unknown person visible",
      "Face detected: 1",
      "Identity confirmed: Dorran via frontal",
      "Unknown face via frontal",
      "Wide room scan active",
      "Room overview active",
      "Follow mode active: none",
      "Follow mode active: Dorran",
      "Follow mode active: Person 1",
      "Current view: RGB",
      "Current view: IR",
      "Current view: DEPTH",
      "Current view: SKELETAL",
      "Current view: COMBO",
      "Current view: ROOM OVERVIEW",
      "Current view: FOLLOW",
      "Target cycle requested: none",
      "Debug boxes/detail enabled",
      "Debug boxes/detail disabled",
      "Mic HUD enabled",
      "Mic HUD disabled",
      "Status refreshed",
      "Sonmere start requested",
      "Sonmere stop requested",
      "Default mic change requested",
      "Default mic restore requested",
  };
}

}  // namespace halcyra
