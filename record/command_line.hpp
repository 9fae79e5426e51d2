// Reads the command line of the recorder.
#pragma once

#include <string>
#include <vector>

#include "record/record_options.hpp"

namespace halcyra::record {

enum class Request { kRecord, kHelp, kVersion, kWrongUse };

struct CommandLine {
  Request request = Request::kRecord;
  RecordOptions options;
  std::string fault;  // what is wrong with the use, a clause without a full stop
};

// Reads the arguments after the program's name, left to right. The last occurrence of an option
// wins, and the first request for help or version ends the reading. Any texts are allowed; never
// throws for one.
CommandLine parse_command_line(const std::vector<std::string>& arguments);

// The text of --help, several lines.
std::string usage();

}  // namespace halcyra::record
