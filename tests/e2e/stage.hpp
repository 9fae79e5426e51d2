// The machine that a run of the program sees: a working folder, a home folder and commands, all
// provided by the test. The commands exit with a failure, which must make no difference.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tests/support/fake_commands.hpp"
#include "tests/support/temporary_folder.hpp"

namespace halcyra {

class Stage {
 public:
  // A screen of 1920 x 1200, and a Sonmere and a systemctl that answer nothing.
  Stage();

  const std::filesystem::path& folder() const { return folder_.path(); }
  std::filesystem::path working_folder() const { return folder() / "work"; }
  std::filesystem::path home() const { return folder() / "home"; }
  std::filesystem::path event_file() const;
  std::filesystem::path samples_folder() const { return working_folder() / "faces/dorran"; }

  // Makes a command ("xrandr", "xdpyinfo", "systemctl" or "sonmerectl") that answers nothing yet.
  void provide(const std::string& command);
  void withdraw(const std::string& command);

  // Makes the command a shell script with these lines, which must not use the PATH.
  void provide_script(const std::string& command, const std::string& lines);

  // Where the program finds the command.
  std::filesystem::path file_of(const std::string& command) const;

  // Sets what the command prints for a call such as "sonmerectl status".
  void answer(const std::string& call, const std::string& text);

  // Replaced in one step, so that the program never sees half a file.
  void write_event_file(const std::string& text);

  // All calls so far, oldest first, for example "xrandr --current".
  std::vector<std::string> calls() const;

  // The variables that lead the program to this stage; none names a display.
  std::map<std::string, std::string> environment() const;

 private:
  TemporaryFolder folder_;
  FakeCommands commands_;
};

}  // namespace halcyra
