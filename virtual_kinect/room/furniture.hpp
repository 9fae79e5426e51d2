// Everything in the room that does not move.
#pragma once

#include <vector>

#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

// A box that keeps light from what is near it.
struct Obstacle {
  Vec3 center;
  Vec3 half_sizes;
};

struct Furniture {
  std::vector<Surface> surfaces;  // in coordinates of the camera
  std::vector<Obstacle> obstacles;
};

constexpr float kBackWallDepth = 4000.0F;

// Painted, and darkened where it stands close together.
Furniture furnish_room();

}  // namespace halcyra::virtual_kinect::room
