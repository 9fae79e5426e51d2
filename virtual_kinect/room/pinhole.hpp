// The two cameras of the sensor. Both look along +z from the same point, so that a pixel of one
// maps to a pixel of the other by its ray alone, whatever its depth:
//   colour x = 960 + (depth x - 256) * 1066 / 365.5, and likewise for y with 540 and 212.
// The colour camera sees 84 x 54 degrees, the depth camera 70 x 60.
#pragma once

#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// Places of a picture are in pixels: pixel (i, j) covers [i, i+1) x [j, j+1). The optical axis
// meets the middle of the picture.
struct Pinhole {
  int width;
  int height;
  float focal;  // pixels, the same along both axes

  float column(const Vec3& p) const { return 0.5F * static_cast<float>(width) + focal * p.x / p.z; }
  float row(const Vec3& p) const { return 0.5F * static_cast<float>(height) + focal * p.y / p.z; }
  // The point with z = 1 that is seen at a place of the picture.
  Vec3 ray(float column, float row) const {
    return {(column - 0.5F * static_cast<float>(width)) / focal,
            (row - 0.5F * static_cast<float>(height)) / focal, 1.0F};
  }
};

constexpr Pinhole kColorCamera{1920, 1080, 1066.0F};
constexpr Pinhole kDepthCamera{512, 424, 365.5F};

}  // namespace halcyra::virtual_kinect::room
