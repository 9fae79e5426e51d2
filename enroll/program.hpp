// One run of halcyra-enroll, from the command line to the exit status.
#pragma once

namespace halcyra {

// Returns 0 if the samples are good, 1 if something failed or should be done about them, and 2 for
// a wrong command line, with one sentence and the usage text on standard error.
int run_enroll(int argc, const char* const* argv);

}  // namespace halcyra
