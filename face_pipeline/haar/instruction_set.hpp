// Which of the processor's instructions the search may use.
#pragma once

#include <vector>

namespace halcyra::haar {

enum class InstructionSet { kBaseline, kAvx2, kAvx512 };

// Those that this program was built for and that this machine can run, the fastest last. The
// baseline is always among them.
std::vector<InstructionSet> available_instruction_sets();

}  // namespace halcyra::haar
