// The command lines that the tests try, and the expected results.
#pragma once

#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace halcyra {

struct CommandLineCase {
  std::string name;
  std::vector<std::string> arguments;
  // Accepted lines: the values of the exit summary that differ from a run with the defaults.
  std::map<std::string, std::string> summary = {};
  // Rejected lines: the text on standard error.
  std::string complaint = "";
};

// GoogleTest prints the parameters of a test with this.
inline void PrintTo(const CommandLineCase& test_case, std::ostream* stream) {
  *stream << test_case.name;
}

// Lines that start a run, on a screen of 1920 x 1080; each ends by itself and uses no sensor.
std::vector<CommandLineCase> accepted_lines();

// Lines that end with the usage and status 2.
std::vector<CommandLineCase> rejected_lines();

// Lines that end with the usage and status 0.
std::vector<CommandLineCase> help_lines();

// Lines with a value that cannot be converted, which ends the process with an uncaught exception.
std::vector<CommandLineCase> aborting_lines();

}  // namespace halcyra
