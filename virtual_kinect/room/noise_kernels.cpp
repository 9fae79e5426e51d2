#include "virtual_kinect/room/noise_kernels.hpp"

namespace halcyra::virtual_kinect::room {

std::vector<NoiseKernel*> available_noise_kernels() {
  std::vector<NoiseKernel*> kernels = {compute_noise_baseline};
#ifdef HALCYRA_X86_KERNELS
  if (__builtin_cpu_supports("avx2") != 0) kernels.push_back(compute_noise_avx2);
#endif
  return kernels;
}

}  // namespace halcyra::virtual_kinect::room
