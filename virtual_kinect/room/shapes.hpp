// Simple surfaces that bodies and furniture are put together from.
#pragma once

#include <vector>

#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

// One horizontal cross-section of a tube.
struct Ring {
  Vec3 center;
  float half_width;  // along x
  float half_depth;  // along z
};

// Round and closed, through the rings from top to bottom; u = 0.5 is the side that faces -z.
Surface make_tube(const std::vector<Ring>& rings, int columns, int rows);

// A flat piece from its upper left corner, seen from outside.
Surface make_sheet(const Vec3& corner, const Vec3& across, const Vec3& down, float grid_step);

// The faces of a box that can be seen by somebody in front of it.
std::vector<Surface> make_box(const Vec3& least, const Vec3& most, float grid_step);

// A box without edges, as cushions and bags are.
Surface make_cushion(const Vec3& center, const Vec3& half_sizes);

// The same surface seen from behind.
Surface reversed(const Surface& surface);

}  // namespace halcyra::virtual_kinect::room
