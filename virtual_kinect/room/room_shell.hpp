// The room itself: walls, floor, ceiling, the window and what hangs on the wall.
#pragma once

#include <functional>
#include <vector>

#include <opencv2/core/types.hpp>

#include "virtual_kinect/room/furniture.hpp"
#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

struct PaintedSurface {
  Surface surface;
  cv::Size texture;
  std::function<Reflectance(float u, float v, const Vec3& point)> reflectance;
};

std::vector<PaintedSurface> make_shell();

// The walls, floor and ceiling as what keeps light from the corners.
std::vector<Obstacle> shell_obstacles();

}  // namespace halcyra::virtual_kinect::room
