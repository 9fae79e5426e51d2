// Everything in the room that does not move.
#pragma once

#include <vector>

#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

// The painted surfaces of the shell and the furniture, in coordinates of the camera. Their openness
// is lower where they are close to each other.
std::vector<Surface> furnish_room();

}  // namespace halcyra::virtual_kinect::room
