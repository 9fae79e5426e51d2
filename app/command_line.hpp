// Reads the command line into the options.
#pragma once

#include <string>

#include "app/run_state/options.hpp"

namespace halcyra {

// Overwrites `options` from argv[1..argc-1], left to right; the last occurrence of an option wins.
// Returns false for an invalid line (unknown argument, missing value, value out of range); only an
// unknown argument is named, on standard error. "--help" and "-h" print the usage and end the
// process with status 0. A value that is not a number throws std::invalid_argument or
// std::out_of_range, which nothing catches.
bool parse_args(int argc, const char* const* argv, Options& options);

// Writes the usage text to standard output.
void usage(const std::string& program);

}  // namespace halcyra
