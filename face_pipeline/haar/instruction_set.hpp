// Which instructions of the processor the search may use.
#pragma once

#include <vector>

namespace halcyra::haar {

enum class InstructionSet { kBaseline, kAvx2, kAvx512, kNeon };

// Those that the program was built for and this machine can run, from the slowest to the fastest.
// The baseline is always the first.
std::vector<InstructionSet> available_instruction_sets();

}  // namespace halcyra::haar
