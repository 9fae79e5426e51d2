// Four numbers that are computed with as one.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

using FourFloats = float __attribute__((vector_size(16)));
using FourInts = std::int32_t __attribute__((vector_size(16)));

inline FourFloats mix(const FourFloats& a, const FourFloats& b, float t) { return a + (b - a) * t; }

// As std::min and std::max do it, in each lane.
inline FourFloats least(const FourFloats& a, const FourFloats& b) { return b < a ? b : a; }
inline FourFloats most(const FourFloats& a, const FourFloats& b) { return a < b ? b : a; }

inline FourFloats square_roots(const FourFloats& a) {
  return FourFloats{std::sqrt(a[0]), std::sqrt(a[1]), std::sqrt(a[2]), std::sqrt(a[3])};
}

// Four points, coordinate by coordinate.
struct FourPoints {
  FourFloats x{};
  FourFloats y{};
  FourFloats z{};

  Vec3 operator[](std::size_t lane) const { return {x[lane], y[lane], z[lane]}; }
  void set(std::size_t lane, const Vec3& p) {
    x[lane] = p.x;
    y[lane] = p.y;
    z[lane] = p.z;
  }
};

inline FourPoints operator+(const FourPoints& a, const FourPoints& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline FourPoints operator-(const FourPoints& a, const Vec3& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline FourPoints operator+(const FourPoints& a, const Vec3& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline FourPoints operator*(const FourPoints& a, const FourFloats& s) {
  return {a.x * s, a.y * s, a.z * s};
}
inline FourPoints divide(const FourPoints& a, const Vec3& b) {
  return {a.x / b.x, a.y / b.y, a.z / b.z};
}
inline FourFloats lengths(const FourPoints& a) {
  return square_roots(a.x * a.x + a.y * a.y + a.z * a.z);
}

}  // namespace halcyra::virtual_kinect::room
