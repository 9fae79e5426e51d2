#include "tests/e2e/stage.hpp"

#include <algorithm>
#include <cstdlib>

#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

// Variables of the test itself that the program needs as well: the time zone of the event times,
// and the settings of instrumented builds.
constexpr const char* kPassedOn[] = {"TZ",           "LD_LIBRARY_PATH",  "ASAN_OPTIONS",
                                     "LSAN_OPTIONS", "UBSAN_OPTIONS",    "TSAN_OPTIONS",
                                     "GCOV_PREFIX",  "GCOV_PREFIX_STRIP"};

}  // namespace

Stage::Stage() {
  std::filesystem::create_directories(working_folder());
  std::filesystem::create_directories(home());
  provide("sonmerectl");
  provide("systemctl");
  answer("xrandr --current", "screen connected primary 1920x1200+0+0\n");
}

std::filesystem::path Stage::event_file() const {
  return home() / ".local/state/halcyra/first-run-event.json";
}

std::filesystem::path Stage::file_of(const std::string& command) const {
  return command == "sonmerectl" ? working_folder() / "install" / command
                                 : folder() / "bin" / command;
}

void Stage::provide(const std::string& command) { commands_.answer_nothing(file_of(command)); }

void Stage::provide_script(const std::string& command, const std::string& lines) {
  write_text(file_of(command), "#!/bin/sh\n" + lines);
  std::filesystem::permissions(file_of(command), std::filesystem::perms::owner_all);
}

void Stage::withdraw(const std::string& command) { std::filesystem::remove(file_of(command)); }

void Stage::answer(const std::string& call, const std::string& text) {
  constexpr int kFailure = 3;
  const std::size_t name_length = std::min(call.find(' '), call.size());
  const std::string arguments = call.substr(std::min(name_length + 1, call.size()));
  commands_.answer(file_of(call.substr(0, name_length)), arguments, text, kFailure);
}

void Stage::write_event_file(const std::string& text) { write_text(event_file(), text); }

std::vector<std::string> Stage::calls() const {
  std::vector<std::string> calls = commands_.calls();
  for (std::string& call : calls) call.resize(call.find_last_not_of(' ') + 1);
  return calls;
}

std::map<std::string, std::string> Stage::environment() const {
  std::map<std::string, std::string> result = {
      {"HOME", home().string()},
      {"PATH", (folder() / "bin").string()},
      {"XDG_RUNTIME_DIR", folder().string()},
  };
  for (const char* const name : kPassedOn) {
    if (const char* const value = std::getenv(name)) result[name] = value;
  }
  return result;
}

}  // namespace halcyra
