// Simple surfaces, not painted yet, of which bodies and furniture are made.
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

// A round, closed surface through at least two rings from top to bottom; u = 0.5 is the side that
// faces -z. `columns` and `rows` are those of the Surface.
Surface make_tube(const std::vector<Ring>& rings, int columns, int rows);

// A flat piece. `corner` is its upper left as seen from outside; the grid's points are about
// `grid_step` millimetres apart.
Surface make_sheet(const Vec3& corner, const Vec3& across, const Vec3& down, float grid_step);

// The faces of a box that the camera can see: the front, and the top, bottom and sides that face
// it.
std::vector<Surface> make_box(const Vec3& least, const Vec3& most, float grid_step);

// A box with rounded edges.
Surface make_cushion(const Vec3& center, const Vec3& half_sizes);

// The back of the same surface. Comes before painting, as the texture is not mirrored.
Surface reversed(const Surface& surface);

}  // namespace halcyra::virtual_kinect::room
