#include "tests/e2e/program.hpp"

#include "tests/support/text_file.hpp"

namespace halcyra {

Program::Program(const Stage& stage, const ProgramStart& start)
    : output_file_(stage.folder() / "stdout"), errors_file_(stage.folder() / "stderr") {
  ProcessStart process;
  process.executable = start.executable;
  process.arguments = start.arguments;
  process.environment = stage.environment();
  // Without OpenGL the window needs no driver and opens sooner.
  process.environment["QT_XCB_GL_INTEGRATION"] = "none";
  if (start.display.empty()) {
    process.environment["QT_QPA_PLATFORM"] = "offscreen";
  } else {
    process.environment["QT_QPA_PLATFORM"] = "xcb";
    process.environment["DISPLAY"] = start.display;
  }
  for (const auto& [name, value] : start.environment) process.environment[name] = value;
  for (const std::string& name : start.unset) process.environment.erase(name);
  process.working_folder = stage.working_folder();
  process.stdout_file = output_file_;
  process.stderr_file = errors_file_;
  process.streams = start.streams;
  process.bound_by_modes = start.bound_by_modes;
  process_ = std::make_unique<ChildProcess>(process);
}

std::string Program::output() const { return read_text(output_file_); }

std::string Program::errors() const { return read_text(errors_file_); }

}  // namespace halcyra
