// How a fuzzer says that something must hold whatever the input is.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace halcyra {

// Ends the process, which the fuzzer takes for a finding, where it does not hold.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

}  // namespace halcyra
