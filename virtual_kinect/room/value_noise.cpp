#include "virtual_kinect/room/value_noise.hpp"

#include <cmath>

namespace halcyra::virtual_kinect::room {

namespace {

// From one corner of the lattice to the next, the number that is hashed grows by these.
constexpr std::uint32_t kAlongX = 0x8DA6B343U;
constexpr std::uint32_t kAlongY = 0xD8163841U;
constexpr std::uint32_t kAlongZ = 0xCB1AB31FU;
constexpr std::uint32_t kAlongSeeds = 0x9E3779B9U;

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
  return hash_unit(x * kAlongX + y * kAlongY + z * kAlongZ + seed * kAlongSeeds);
}

// Four noises at once take half the time that they take one by one. These functions do in each lane
// what their namesakes for single numbers do, to the bit.
using FourBits = std::uint32_t __attribute__((vector_size(16)));
using FourInts = std::int32_t __attribute__((vector_size(16)));
using FourFloats = float __attribute__((vector_size(16)));

struct FourCells {
  FourBits index;
  FourFloats blend;
};

FourCells cells_of(FourFloats t) {
  const FourInts towards_zero = __builtin_convertvector(t, FourInts);
  const FourInts floor =
      towards_zero + (__builtin_convertvector(towards_zero, FourFloats) > t);  // true is -1
  const FourFloats rest = t - __builtin_convertvector(floor, FourFloats);
  return {__builtin_convertvector(floor, FourBits), rest * rest * (3.0F - 2.0F * rest)};
}

FourFloats hash_units(FourBits n) {
  n = (n ^ (n >> 16U)) * 0x7FEB352DU;
  n = (n ^ (n >> 15U)) * 0x846CA68BU;
  n = n ^ (n >> 16U);
  return __builtin_convertvector(__builtin_convertvector(n >> 8U, FourInts), FourFloats) *
         (1.0F / 16777216.0F);
}

FourFloats mix(FourFloats a, FourFloats b, FourFloats t) { return a + (b - a) * t; }

FourFloats value_noises(FourFloats x, FourFloats y, FourFloats z, FourBits seeds) {
  const FourCells cx = cells_of(x);
  const FourCells cy = cells_of(y);
  const FourCells cz = cells_of(z);
  const FourBits corner =
      cx.index * kAlongX + cy.index * kAlongY + cz.index * kAlongZ + seeds * kAlongSeeds;
  FourFloats planes[2];
  for (std::uint32_t k = 0; k < 2; ++k) {
    const FourBits n = corner + k * kAlongZ;
    const FourFloats upper = mix(hash_units(n), hash_units(n + kAlongX), cx.blend);
    const FourFloats lower =
        mix(hash_units(n + kAlongY), hash_units(n + kAlongX + kAlongY), cx.blend);
    planes[k] = mix(upper, lower, cy.blend);
  }
  return 2.0F * mix(planes[0], planes[1], cz.blend) - 1.0F;
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

LayeredAndSingle layered_and_single_noise(const Vec3& p, std::uint32_t seed, const Vec3& single,
                                          std::uint32_t single_seed) {
  const Vec3 q = p * 2.03F;
  const Vec3 r = p * 4.1F;
  const FourFloats noises = value_noises(
      FourFloats{p.x, q.x, r.x, single.x}, FourFloats{p.y, q.y, r.y, single.y},
      FourFloats{p.z, q.z, r.z, single.z}, FourBits{seed, seed + 1, seed + 2, single_seed});
  return {0.57F * noises[0] + 0.28F * noises[1] + 0.15F * noises[2], noises[3]};
}

float layered_noise(const Vec3& p, std::uint32_t seed) {
  return layered_and_single_noise(p, seed, {}, 0).layered;
}

}  // namespace halcyra::virtual_kinect::room
