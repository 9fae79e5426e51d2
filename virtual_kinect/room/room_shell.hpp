// The room itself: walls, floor, rug, ceiling, window, curtains and the painting on the wall.
#pragma once

#include <vector>

#include <opencv2/core/types.hpp>

#include "virtual_kinect/room/coat.hpp"
#include "virtual_kinect/room/obstacle.hpp"
#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

// A surface that is not painted yet, and what to paint it with.
struct ShellPart {
  Surface surface;
  cv::Size texture;  // pixels
  Coat coat;
};

// In coordinates of the camera.
std::vector<ShellPart> make_shell();

// The walls, the floor and the ceiling, which keep light from the corners.
std::vector<Obstacle> shell_obstacles();

}  // namespace halcyra::virtual_kinect::room
