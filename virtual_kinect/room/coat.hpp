// What surfaces are painted with.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include <opencv2/core/types.hpp>

#include "virtual_kinect/room/places.hpp"
#include "virtual_kinect/room/surface.hpp"
#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// The share of the light that a point of a surface gives back, 0 to 1 each.
struct Reflectance {
  Vec3 color;             // red, green, blue as displayed
  float infrared = 0.5F;  // of the sensor's own infrared light
};

// Some texels of one surface, in any order.
struct Texels {
  std::vector<float> u;  // 0 to 1, along the surface's columns
  std::vector<float> v;  // and along its rows
  Places points;         // of the surface there

  std::size_t size() const { return u.size(); }
};

// Tells the reflectances of texels, many at once, in their order.
using Coat = std::function<std::vector<Reflectance>(const Texels& texels)>;

// The reflectances at(0), at(1) and so on, one for each texel.
template <typename At>
std::vector<Reflectance> reflectances(const Texels& texels, const At& at) {
  std::vector<Reflectance> all;
  all.reserve(texels.size());
  for (std::size_t i = 0; i < texels.size(); ++i) all.push_back(at(i));
  return all;
}

// Everywhere the same.
Coat even_coat(const Reflectance& reflectance);

// Paints the texture of a surface, `size` pixels large.
void paint(Surface& surface, cv::Size size, const Coat& coat);

}  // namespace halcyra::virtual_kinect::room
