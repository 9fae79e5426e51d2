#include <cstdint>

#include "virtual_kinect/room/value_noise_loop.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

struct Lanes {
  using Floats = float __attribute__((vector_size(16)));
  using Ints = std::int32_t __attribute__((vector_size(16)));
  using Bits = std::uint32_t __attribute__((vector_size(16)));
};

}  // namespace

void compute_noise_baseline(const NoiseTask& task, float* noises) {
  ValueNoiseLoop<Lanes>::run(task, noises);
}

}  // namespace halcyra::virtual_kinect::room
