// One run of the program, from the command line to the exit status.
#pragma once

namespace halcyra {

// Runs until a quit key or the frame limit, then returns 0. For an invalid command line returns 2,
// with the usage text on standard output; if no display is named, returns 1, with one line on
// standard error. "--help" ends the process with status 0. Exceptions are not caught.
int run_program(int argc, const char* const* argv);

}  // namespace halcyra
