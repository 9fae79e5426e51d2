// What the furniture is painted with. Colours are displayed red, green and blue; patterns follow
// the points of the room.
#pragma once

#include <cstdint>
#include <vector>

#include "virtual_kinect/room/coat.hpp"

namespace halcyra::virtual_kinect::room {

// Slightly worn. `infrared` is Reflectance's too.
Coat plain(const Vec3& color, float infrared);

// With a grain along x.
Coat wood(const Vec3& color);

// Woven.
Coat fabric(const Vec3& color);

// With two printed bands, the upper one at `band`, 0 to 1 from the top. Each seed is worn
// elsewhere.
Coat book_spine(const Vec3& color, float band, std::uint32_t seed);

// A leaf that grows in a direction, in radians; each direction has a tone of its own.
Coat leaf_green(float azimuth);

// Brightest at half its height. A Coat itself.
std::vector<Reflectance> lamp_shade(const Texels& texels);

}  // namespace halcyra::virtual_kinect::room
