// Pictures of the rendered owner, as the colour camera takes them.
#pragma once

#include <cstdint>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "virtual_kinect/room/renderer.hpp"

namespace halcyra {

// How the owner stands. Positive yaw turns his face to the right edge of the picture.
struct OwnerStance {
  float head_yaw = 0.0F;  // degrees
  float x = -60.0F;       // millimetres from the middle of the picture to the right
  float z = 1500.0F;      // millimetres from the camera
  float lamp = 0.55F;
};

// 1920 x 1080, BGR.
inline cv::Mat picture_of_owner(const virtual_kinect::room::Renderer& renderer,
                                const OwnerStance& stance, std::uint64_t number) {
  namespace room = virtual_kinect::room;
  room::Posture posture;
  posture.x = stance.x;
  posture.z = stance.z;
  posture.body_yaw = 0.3F * stance.head_yaw;
  posture.head_yaw = stance.head_yaw;
  room::Moment moment;
  moment.people = {{room::Person::kOwner, posture}};
  moment.light = {1.0F, stance.lamp};
  cv::Mat picture;
  cv::cvtColor(renderer.render_color(moment, number), picture, cv::COLOR_BGRA2BGR);
  return picture;
}

}  // namespace halcyra
