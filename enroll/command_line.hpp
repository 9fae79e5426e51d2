// Reads the command line of halcyra-enroll.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "enroll/enroll_options.hpp"

namespace halcyra {

enum class EnrollRequest {
  kRun,          // carry out the task of the options
  kShowHelp,     // "--help" or "-h"
  kShowVersion,  // "--version"
};

// Overwrites `options` from argv[1..argc-1], left to right; the last occurrence of an option wins,
// pictures add up. Help and version end the reading. Nothing, with a sentence in `complaint`, for
// an invalid line: an unknown argument, a missing or invalid value, or options that do not go
// together.
std::optional<EnrollRequest> parse_enroll_args(int argc, const char* const* argv,
                                               EnrollOptions& options, std::string& complaint);

// `program` is the name by which the program was called.
void write_enroll_usage(std::ostream& out, const std::string& program);

// "halcyra-enroll" and the version of the project.
void write_enroll_version(std::ostream& out);

}  // namespace halcyra
