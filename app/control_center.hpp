// One run of the control center, from the command line to the exit status.
#pragma once

namespace halcyra {

// Runs until a quit key or the frame limit. Returns 0, or 2 with the usage text on standard output
// for an invalid command line. Exceptions of the libraries are not caught.
int run_control_center(int argc, const char* const* argv);

}  // namespace halcyra
