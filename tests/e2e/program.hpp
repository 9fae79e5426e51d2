// One run of the real program.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/e2e/child_process.hpp"
#include "tests/e2e/stage.hpp"

namespace halcyra {

struct ProgramStart {
  std::vector<std::string> arguments;
  std::string display = "";  // of an X server; without one the program draws into memory
  std::map<std::string, std::string> environment = {};  // in addition to the stage's
  std::string executable = HALCYRA_PROGRAM;
  std::vector<std::string> unset = {};  // variables that the program must not see
  OddStreams streams = {};
  bool bound_by_modes = false;  // see ProcessStart
};

class Program {
 public:
  Program(const Stage& stage, const ProgramStart& start);

  pid_t id() const { return process_->id(); }
  bool running() { return process_->running(); }
  std::optional<ProcessEnd> wait_for_end() { return process_->wait_for_end(); }
  std::string output() const;
  std::string errors() const;

 private:
  std::filesystem::path output_file_;
  std::filesystem::path errors_file_;
  std::unique_ptr<ChildProcess> process_;
};

}  // namespace halcyra
