// What the walls, the floor, the window and the curtains are painted with.
#pragma once

#include <vector>

#include "virtual_kinect/room/coat.hpp"

namespace halcyra::virtual_kinect::room {

// Those that take texels are coats themselves.

// With a skirting board.
std::vector<Reflectance> wall_paint(const Texels& texels);

std::vector<Reflectance> floor_boards(const Texels& texels);

std::vector<Reflectance> rug(const Texels& texels);

std::vector<Reflectance> curtain_cloth(const Texels& texels);

// The painting on the wall.
std::vector<Reflectance> painted_landscape(const Texels& texels);

// A hazy garden: sky, hills, tree crowns.
std::vector<Reflectance> view_outside(const Texels& texels);

Coat white_wood();

Coat oak_frame();

}  // namespace halcyra::virtual_kinect::room
