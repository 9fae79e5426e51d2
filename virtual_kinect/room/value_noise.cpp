#include "virtual_kinect/room/value_noise.hpp"

#include <cmath>
#include <cstddef>

#include "virtual_kinect/room/noise_kernels.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

// How much finer each octave of layered noise is than the first, and what share it has.
constexpr float kSecondOctave = 2.03F;
constexpr float kThirdOctave = 4.1F;
constexpr float kShares[] = {0.57F, 0.28F, 0.15F};

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

std::vector<float> noises(const Places& places, const std::vector<std::uint32_t>& seeds) {
  static NoiseKernel* const kKernel = available_noise_kernels().back();
  std::vector<float> values(places.size());
  kKernel({places.x.data(), places.y.data(), places.z.data(), seeds.data(), places.size()},
          values.data());
  return values;
}

std::vector<std::uint32_t> moved(std::vector<std::uint32_t> seeds, std::uint32_t by) {
  for (std::uint32_t& seed : seeds) seed += by;
  return seeds;
}

float sum_of_octaves(float first, float second, float third) {
  return kShares[0] * first + kShares[1] * second + kShares[2] * third;
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
  return sum_of_octaves(value_noise(p, seed), value_noise(p * kSecondOctave, seed + 1),
                        value_noise(p * kThirdOctave, seed + 2));
}

std::vector<float> value_noise(const Places& places, std::uint32_t seed) {
  return noises(places, std::vector<std::uint32_t>(places.size(), seed));
}

std::vector<float> layered_noise(const Places& places, std::uint32_t seed) {
  return layered_noise(places, std::vector<std::uint32_t>(places.size(), seed));
}

std::vector<float> layered_noise(const Places& places, const std::vector<std::uint32_t>& seeds) {
  std::vector<float> sums = noises(places, seeds);
  const std::vector<float> second = noises(places * kSecondOctave, moved(seeds, 1));
  const std::vector<float> third = noises(places * kThirdOctave, moved(seeds, 2));
  for (std::size_t i = 0; i < sums.size(); ++i) {
    sums[i] = sum_of_octaves(sums[i], second[i], third[i]);
  }
  return sums;
}

}  // namespace halcyra::virtual_kinect::room
