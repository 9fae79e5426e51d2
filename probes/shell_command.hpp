// Runs fixed shell command lines and waits for them.
#pragma once

#include <string>

namespace halcyra {

// Everything the command wrote to standard output, NUL bytes and line ends included; its standard
// error is discarded and its exit status ignored. "" when it cannot be started or prints nothing.
std::string run_capture(const std::string& command);

// Runs the command with its output discarded and its exit status ignored.
void run_action(const std::string& command);

}  // namespace halcyra
