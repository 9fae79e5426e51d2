// Smooth pseudo-random patterns, the same on every machine.
#pragma once

#include <cstdint>

#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// Evenly distributed bits for a number.
std::uint32_t hash_bits(std::uint32_t n);
// In [0, 1).
float hash_unit(std::uint32_t n);

// In [-1, 1]; features are about as large as the unit of `p`.
float value_noise(const Vec3& p, std::uint32_t seed);
// Three octaves of it, in [-1, 1].
float layered_noise(const Vec3& p, std::uint32_t seed);

}  // namespace halcyra::virtual_kinect::room
