// What keeps light from what stands near it.
#pragma once

#include <vector>

#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// A box, in coordinates of the camera.
struct Obstacle {
  Vec3 center;
  Vec3 half_sizes;
};

// How much light reaches a point of a surface past the obstacles: 1 in the open, and no less than
// 0.2 in a corner. `normal` has length 1.
float openness_among(const std::vector<Obstacle>& obstacles, const Vec3& p, const Vec3& normal);

}  // namespace halcyra::virtual_kinect::room
