// A process that a test starts. It is killed when the test ends.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace halcyra {

// Which of the descriptors 0 to 2 a process is started with in an unusual state.
struct OddStreams {
  std::vector<int> closed = {};          // not open at the start
  std::vector<int> full = {};            // no room on the device
  std::vector<int> without_reader = {};  // a pipe whose reader has gone
};

struct ProcessStart {
  std::string executable;              // absolute path, or a name to look up on the test's own PATH
  std::vector<std::string> arguments;  // without the name of the program
  std::map<std::string, std::string> environment;  // all of it; nothing is inherited
  std::filesystem::path working_folder = ".";
  std::filesystem::path stdout_file = "/dev/null";
  std::filesystem::path stderr_file = "/dev/null";
  OddStreams streams = {};
  bool bound_by_modes = false;    // file modes apply even to root
  int inherited_descriptor = -1;  // stays open in the child
};

struct ProcessEnd {
  int exit_status = -1;  // -1 when a signal ended it
  int signal = 0;        // 0 when it exited
};

class ChildProcess {
 public:
  explicit ChildProcess(const ProcessStart& start);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();  // kills it if it is still running

  pid_t id() const { return id_; }
  bool running();

  // How it ended; nothing if it is still running after the deadline in waiting.hpp.
  std::optional<ProcessEnd> wait_for_end();

 private:
  pid_t id_ = -1;
  std::optional<ProcessEnd> end_;
};

}  // namespace halcyra
