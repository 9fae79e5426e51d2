// A checkout of a test's own, with fake commands in the place of those that install, fetch and
// build.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tests/e2e/child_process.hpp"
#include "tests/support/temporary_folder.hpp"

namespace halcyra {

// How a script ended and what it printed.
struct ScriptResult {
  int status = -1;  // -1 if a signal ended it, or nothing did before the deadline
  std::string output;
  std::string errors;
};

// The fakes:
//   id          says that root runs the script, unless root_is_refused() was called. A real sudo
//               would look for the other fakes elsewhere
//   dpkg-query  says that every package is installed, unless packages_are_missing() was called
//   git         has exactly the commit that it is asked for
//   cmake       makes the programs that are asked for, which tell how they were called, and other
//               files that the scripts look at. While the stage has a file "pause" it waits in the
//               middle of compiling the driver, and with a file "compile-error" it fails to. With
//               "system-driver", configuring finds a driver.
//   udevadm     does nothing
// Those and sudo write their names and arguments to a list.
class ScriptStage {
 public:
  ScriptStage();

  // A path below the stage. There are "checkout", "system" (what HALCYRA_SYSTEM names), "usb" (the
  // kernel's list of devices), "here" (the working folder), "person" (the home).
  std::filesystem::path path(const std::string& name) const { return folder_.path() / name; }

  // An executable file; `name` may be a path below the stage.
  void write_program(const std::string& name, const std::string& script) const;
  void write_command(const std::string& name, const std::string& script) const;
  void use_real_command(const std::string& name) const;

  // From now on packages are to be installed, nobody is root and sudo refuses.
  void packages_are_missing() const;
  void root_is_refused() const;

  // A USB device; `speed` in Mbit/s, as the kernel writes it. Its device file is
  // system/dev/bus/usb/ 002/007 and is not made here.
  void attach(const std::string& vendor, const std::string& product,
              const std::string& speed = "5000") const;

  ProcessStart start_of(const std::string& script,
                        const std::vector<std::string>& arguments = {}) const;
  ScriptResult run(const std::string& script, const std::vector<std::string>& arguments = {}) const;
  static ScriptResult end_of(const ProcessStart& start, ChildProcess& process);

  // The commands that were called since the last time this was asked, one a line.
  std::string calls() const;

  std::map<std::string, std::string> environment;
  bool bound_by_modes = false;

 private:
  TemporaryFolder folder_;
};

}  // namespace halcyra
