// Many points, coordinate by coordinate, so that something is computed for several at once.
#pragma once

#include <cstddef>
#include <vector>

#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// All coordinates are equally many.
struct Places {
  std::vector<float> x;
  std::vector<float> y;
  std::vector<float> z;

  std::size_t size() const { return x.size(); }
  Vec3 operator[](std::size_t i) const { return {x[i], y[i], z[i]}; }
  void add(const Vec3& p) {
    x.push_back(p.x);
    y.push_back(p.y);
    z.push_back(p.z);
  }
};

inline std::vector<float> scaled(const std::vector<float>& values, float factor) {
  std::vector<float> products(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) products[i] = values[i] * factor;
  return products;
}

inline Places multiply(const Places& places, const Vec3& factors) {
  return {scaled(places.x, factors.x), scaled(places.y, factors.y), scaled(places.z, factors.z)};
}
inline Places operator*(const Places& places, float factor) {
  return multiply(places, {factor, factor, factor});
}

}  // namespace halcyra::virtual_kinect::room
