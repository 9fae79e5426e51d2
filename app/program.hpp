// One run of the program, from the command line to the exit status.
#pragma once

namespace halcyra {

// Runs until a quit key or the frame limit. Returns 0; 2 with the usage text on standard output
// for an invalid command line; 1 with one line on standard error where there is no display.
// Exceptions of the libraries are not caught.
int run_program(int argc, const char* const* argv);

}  // namespace halcyra
