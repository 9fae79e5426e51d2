// The faces that the program finds in the rendered room, and whose they are.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "face_pipeline/detection.hpp"
#include "face_pipeline/face_detectors.hpp"
#include "virtual_kinect/room/looks.hpp"
#include "virtual_kinect/room/renderer.hpp"

namespace halcyra {

// One picture of the room and what was found in it.
struct RoomPicture {
  std::uint64_t set = 0;  // since the beginning of the story, 30 a second
  cv::Mat grey;           // 8-bit, 1920 x 1080
  std::vector<Detection> detections;
  // Whose face each detection is; nothing for one that is no face.
  std::vector<std::optional<virtual_kinect::room::Person>> people;
};

// Searches the set as the dashboard does. The cascades must be loaded.
RoomPicture look_at_room(const virtual_kinect::room::Renderer& renderer, FaceDetectors& detectors,
                         std::uint64_t set);

}  // namespace halcyra
