// Starts the program again and again.
#pragma once

#include <string>

namespace halcyra {

// `count` runs of `program`, each from its start over one frame to its end, on small frames and
// without a display. Prints the progress and each failure. False: at least one failed.
bool survives_starts(const std::string& program, int count);

}  // namespace halcyra
