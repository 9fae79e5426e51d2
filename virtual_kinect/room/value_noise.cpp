#include "virtual_kinect/room/value_noise.hpp"

#include <cmath>

namespace halcyra::virtual_kinect::room {

namespace {

struct Cell {
  std::uint32_t index;
  float blend;
};

Cell cell_of(float t) {
  const float floor = std::floor(t);
  const float rest = t - floor;
  return {static_cast<std::uint32_t>(static_cast<std::int32_t>(floor)),
          rest * rest * (3.0F - 2.0F * rest)};
}

float corner(std::uint32_t x, std::uint32_t y, std::uint32_t z, std::uint32_t seed) {
  return hash_unit(x * 0x8DA6B343U + y * 0xD8163841U + z * 0xCB1AB31FU + seed * 0x9E3779B9U);
}

}  // namespace

std::uint32_t hash_bits(std::uint32_t n) {
  n = (n ^ (n >> 16U)) * 0x7FEB352DU;
  n = (n ^ (n >> 15U)) * 0x846CA68BU;
  return n ^ (n >> 16U);
}

float hash_unit(std::uint32_t n) {
  return static_cast<float>(hash_bits(n) >> 8U) * (1.0F / 16777216.0F);
}

float value_noise(const Vec3& p, std::uint32_t seed) {
  const Cell x = cell_of(p.x);
  const Cell y = cell_of(p.y);
  const Cell z = cell_of(p.z);
  float planes[2];
  for (std::uint32_t k = 0; k < 2; ++k) {
    const std::uint32_t layer = z.index + k;
    const float upper = mix(corner(x.index, y.index, layer, seed),
                            corner(x.index + 1, y.index, layer, seed), x.blend);
    const float lower = mix(corner(x.index, y.index + 1, layer, seed),
                            corner(x.index + 1, y.index + 1, layer, seed), x.blend);
    planes[k] = mix(upper, lower, y.blend);
  }
  return 2.0F * mix(planes[0], planes[1], z.blend) - 1.0F;
}

float layered_noise(const Vec3& p, std::uint32_t seed) {
  return 0.57F * value_noise(p, seed) + 0.28F * value_noise(p * 2.03F, seed + 1) +
         0.15F * value_noise(p * 4.1F, seed + 2);
}

}  // namespace halcyra::virtual_kinect::room
