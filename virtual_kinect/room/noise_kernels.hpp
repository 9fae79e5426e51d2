// Value noise at many places, for each set of instructions, and the lattice between whose corners
// it is interpolated.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace halcyra::virtual_kinect::room {

// From one corner of the lattice to the next, the number that is hashed grows by these.
constexpr std::uint32_t kAlongX = 0x8DA6B343U;
constexpr std::uint32_t kAlongY = 0xD8163841U;
constexpr std::uint32_t kAlongZ = 0xCB1AB31FU;
constexpr std::uint32_t kAlongSeeds = 0x9E3779B9U;

// Places to compute value_noise at, `count` of each coordinate and of the seeds.
struct NoiseTask {
  const float* x;
  const float* y;
  const float* z;
  const std::uint32_t* seeds;
  std::size_t count;
};

// Writes the noise at each place. Each kernel gives the numbers of value_noise, to the bit.
using NoiseKernel = void(const NoiseTask& task, float* noises);
NoiseKernel compute_noise_baseline;
NoiseKernel compute_noise_avx2;  // only in a build for x86-64, and for processors that have AVX2

// Those that this processor can run, the quickest last.
std::vector<NoiseKernel*> available_noise_kernels();

}  // namespace halcyra::virtual_kinect::room
