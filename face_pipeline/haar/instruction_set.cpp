#include "face_pipeline/haar/instruction_set.hpp"

namespace halcyra::haar {

std::vector<InstructionSet> available_instruction_sets() {
  std::vector<InstructionSet> sets = {InstructionSet::kBaseline};
#ifdef HALCYRA_X86_KERNELS
  if (__builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("bmi2") != 0) {
    sets.push_back(InstructionSet::kAvx2);
    if (__builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512bw") != 0 &&
        __builtin_cpu_supports("avx512dq") != 0 && __builtin_cpu_supports("avx512vl") != 0) {
      sets.push_back(InstructionSet::kAvx512);
    }
  }
#endif
#ifdef HALCYRA_NEON_KERNEL
  sets.push_back(InstructionSet::kNeon);
#endif
  return sets;
}

}  // namespace halcyra::haar
