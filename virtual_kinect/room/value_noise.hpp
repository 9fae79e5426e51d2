// Smooth pseudo-random patterns, the same on every machine.
#pragma once

#include <cstdint>

#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// Evenly distributed bits; neighbouring numbers give unrelated ones.
std::uint32_t hash_bits(std::uint32_t n);
// Likewise, in [0, 1).
float hash_unit(std::uint32_t n);

// Smooth, in [-1, 1]; from one hill to the next it is about 1 in `p`.
float value_noise(const Vec3& p, std::uint32_t seed);
// The sum of three octaves of value_noise, in [-1, 1].
float layered_noise(const Vec3& p, std::uint32_t seed);

// layered_noise(p, seed) and value_noise(single, single_seed), for little more than the price of
// the second.
struct LayeredAndSingle {
  float layered;
  float single;
};
LayeredAndSingle layered_and_single_noise(const Vec3& p, std::uint32_t seed, const Vec3& single,
                                          std::uint32_t single_seed);

}  // namespace halcyra::virtual_kinect::room
