#include "tests/endurance/repeated_starts.hpp"

#include <chrono>
#include <iostream>
#include <map>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/program.hpp"
#include "tests/endurance/small_recording.hpp"

namespace halcyra {
namespace {

constexpr int kProgressStep = 500;

// "" when the run ended with status 0 and its summary, else what is wrong.
std::string fault_of(Program& program) {
  const std::optional<ProcessEnd> end = program.wait_for_end();
  if (!end) return "did not end";
  if (end->signal != 0) return "ended by signal " + std::to_string(end->signal);
  if (end->exit_status != 0) return "exit status " + std::to_string(end->exit_status);
  const std::map<std::string, std::string> expected = {
      {"frames", "1"}, {"kinect", "connected"}, {"rgb", "OK"}, {"ir", "OK"}, {"depth", "OK"}};
  const std::map<std::string, std::string> summary = summary_values(program.output());
  for (const auto& [name, value] : expected) {
    const auto found = summary.find(name);
    if (found == summary.end() || found->second != value) return "summary without " + name;
  }
  return "";
}

}  // namespace

bool survives_starts(const std::string& program, int count) {
  const Stage stage;
  const Recording recording = write_small_recording(stage.folder() / "recording");
  const ProgramStart start{
      {"--smoke", "--frames", "1"}, "", {{"VIRTUAL_KINECT", recording.folder().string()}}, program};
  const auto begin = std::chrono::steady_clock::now();
  int failures = 0;
  for (int run = 1; run <= count; ++run) {
    Program started(stage, start);
    const std::string fault = fault_of(started);
    if (!fault.empty()) {
      ++failures;
      std::cout << "run " << run << ": " << fault << "\n" << started.errors() << std::endl;
    }
    if (run % kProgressStep == 0 || run == count) {
      const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
      std::cout << run << " runs, " << failures << " failures, " << elapsed.count() << " s"
                << std::endl;
    }
  }
  return failures == 0;
}

}  // namespace halcyra
