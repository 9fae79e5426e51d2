// The room itself: walls, floor, rug, ceiling, window, curtains and the painting on the wall.
#pragma once

#include <functional>
#include <vector>

#include <opencv2/core/types.hpp>

#include "virtual_kinect/room/obstacle.hpp"
#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

// A surface that is not painted yet, and what to paint it with.
struct ShellPart {
  Surface surface;
  cv::Size texture;  // pixels
  std::function<Reflectance(float u, float v, const Vec3& point)> reflectance;
};

// In coordinates of the camera.
std::vector<ShellPart> make_shell();

// The walls, the floor and the ceiling, which keep light from the corners.
std::vector<Obstacle> shell_obstacles();

}  // namespace halcyra::virtual_kinect::room
