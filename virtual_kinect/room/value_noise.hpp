// Smooth pseudo-random patterns, the same on every machine.
#pragma once

#include <cstdint>
#include <vector>

#include "virtual_kinect/room/places.hpp"
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

// The same for many places at once, which takes a fraction of the time. `seeds` has one for each.
std::vector<float> value_noise(const Places& places, std::uint32_t seed);
std::vector<float> layered_noise(const Places& places, std::uint32_t seed);
std::vector<float> layered_noise(const Places& places, const std::vector<std::uint32_t>& seeds);

}  // namespace halcyra::virtual_kinect::room
