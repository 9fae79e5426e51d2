// Commands of a test's own that say what a test wants to hear and remember that they were asked.
#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.hpp"

namespace halcyra {

inline void write_file(const std::filesystem::path& file, const std::string& content) {
  std::filesystem::create_directories(file.parent_path());
  if (!std::ofstream(file, std::ios::binary)
           .write(content.data(), std::streamsize(content.size()))) {
    throw std::runtime_error("cannot write " + file.string());
  }
}

class FakeCommands {
 public:
  // Makes the executable `file`. Asked with the arguments `arguments`, it prints `output`, any
  // bytes, and ends with `exit_status`; asked otherwise, it prints nothing.
  void answer(const std::filesystem::path& file, const std::string& arguments,
              const std::string& output, int exit_status = 0) {
    if (!std::filesystem::exists(file)) write_script(file);
    const std::filesystem::path answer = answers(file) / arguments;
    write_file(answer / "output", output);
    write_file(answer / "exit-status", std::to_string(exit_status));
  }

  // Makes the executable `file` that prints nothing, whatever it is asked.
  void answer_nothing(const std::filesystem::path& file) { write_script(file); }

  // All calls of all commands, as "NAME ARGUMENTS", in their order.
  std::vector<std::string> calls() const {
    std::vector<std::string> calls;
    std::ifstream log(log_file());
    for (std::string line; std::getline(log, line);) calls.push_back(line);
    return calls;
  }

 private:
  std::filesystem::path log_file() const { return folder_.path() / "calls"; }

  std::filesystem::path answers(const std::filesystem::path& file) const {
    return folder_.path() / file.filename();
  }

  // Uses nothing of the PATH, which is often the test's own.
  void write_script(const std::filesystem::path& file) const {
    write_file(file,
               "#!/bin/sh\n"
               "echo \"${0##*/} $*\" >> '" +
                   log_file().string() +
                   "'\n"
                   "answer='" +
                   answers(file).string() +
                   "'/\"$*\"\n"
                   "[ -d \"$answer\" ] || exit 0\n"
                   "/bin/cat \"$answer/output\"\n"
                   "read -r exit_status < \"$answer/exit-status\"\n"
                   "exit \"$exit_status\"\n");
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
  }

  TemporaryFolder folder_;
};

}  // namespace halcyra
