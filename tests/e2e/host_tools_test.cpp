// Missing, broken and crashing system tools.
#include <functional>

#include <gtest/gtest.h>

#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/scenes.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

struct ToolFault {
  std::string name;
  std::function<void(Stage& stage, const std::string& command)> inflict;
};

void PrintTo(const ToolFault& fault, std::ostream* stream) { *stream << fault.name; }

std::string fault_name(const ::testing::TestParamInfo<ToolFault>& info) { return info.param.name; }

// The same 64 binary bytes again and again.
void make_print_noise(Stage& stage, const std::string& command, int blocks) {
  std::string noise;
  for (int i = 0; i < 64; ++i) noise += static_cast<char>(i * 41 % 256);
  const std::filesystem::path file = stage.folder() / "noise";
  std::string content;
  for (int block = 0; block < blocks; ++block) content += noise;
  write_text(file, content);
  stage.provide_script(command, "exec /bin/cat '" + file.string() + "'\n");
}

void make_unexecutable(Stage& stage, const std::string& command) {
  stage.provide(command);
  std::filesystem::permissions(stage.file_of(command), std::filesystem::perms::owner_read);
}

void put_folder_in_place(Stage& stage, const std::string& command) {
  stage.withdraw(command);
  std::filesystem::create_directories(stage.file_of(command));
}

void take_interpreter_away(Stage& stage, const std::string& command) {
  write_text(stage.file_of(command), "#!/no/such/interpreter\necho never printed\n");
  std::filesystem::permissions(stage.file_of(command), std::filesystem::perms::owner_all);
}

// Ways in which a tool prints nothing usable.
std::vector<ToolFault> silent_faults() {
  return {
      {"Missing", [](Stage& stage, const std::string& command) { stage.withdraw(command); }},
      {"NotExecutable", make_unexecutable},
      {"SaysNothing",
       [](Stage& stage, const std::string& command) { stage.provide_script(command, "exit 0\n"); }},
      {"PrintsBinary",
       [](Stage& stage, const std::string& command) { make_print_noise(stage, command, 3); }},
      {"PrintsMegabytes",
       [](Stage& stage, const std::string& command) { make_print_noise(stage, command, 50000); }},
      {"ComplainsOnly",
       [](Stage& stage, const std::string& command) {
         stage.provide_script(command, "echo live_processing: running >&2\nexit 1\n");
       }},
      {"DiesAtOnce",
       [](Stage& stage, const std::string& command) {
         stage.provide_script(command, "kill -KILL $$\n");
       }},
      {"IsAFolder", put_folder_in_place},
      {"InterpreterMissing", take_interpreter_away},
  };
}

class SilentTool : public ::testing::TestWithParam<ToolFault> {
 protected:
  void inflict(const std::string& command) {
    stage_.withdraw(command);
    GetParam().inflict(stage_, command);
  }

  std::string screen() {
    Program program(stage_, {{"--no-camera", "--frames", "1"}});
    const std::optional<ProcessEnd> end = program.wait_for_end();
    EXPECT_TRUE(end && end->exit_status == 0) << program.errors();
    return summary_values(program.output())["screen"];
  }

  Stage stage_;
};

INSTANTIATE_TEST_SUITE_P(Faults, SilentTool, ::testing::ValuesIn(silent_faults()), fault_name);

TEST_P(SilentTool, XrandrLeavesTheQuestionToXdpyinfo) {
  inflict("xrandr");
  stage_.answer("xdpyinfo", "  dimensions:    1700x900 pixels (508x317 millimeters)\n");
  EXPECT_EQ(screen(), "1700x900(xdpyinfo)");
}

TEST_P(SilentTool, XrandrAndXdpyinfoLeaveTheScreenToTheFallback) {
  inflict("xrandr");
  inflict("xdpyinfo");
  EXPECT_EQ(screen(), "1280x720(fallback)");
}

// The keys still log their command, and a repaired script is used at the next refresh.
TEST_P(SilentTool, ServicesAreUnknownAndCanComeBack) {
  inflict("sonmerectl");
  inflict("systemctl");
  DesktopRun run(stage_, {in_readable_window({"--no-camera"})});
  ExpectedDashboard scene = camera_less_scene("combo");
  EXPECT_EQ(run.wait_for(scene), "");
  run.desktop().press("k");
  log_message(scene, "Sonmere start requested");
  EXPECT_EQ(run.wait_for(scene), "");

  std::filesystem::remove_all(stage_.file_of("sonmerectl"));
  stage_.provide("sonmerectl");
  stage_.answer("sonmerectl status", "live_processing: running\n");
  run.desktop().press("v");
  scene.status.voice.live_processing = "running";
  scene.status.voice.live_running = true;
  log_message(scene, "Status refreshed");
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
}

// Ways in which a tool fails after it has printed its answer.
std::vector<ToolFault> last_words() {
  const auto dying_by = [](const std::string& end) {
    return [end](Stage& stage, const std::string& command) {
      const std::string words =
          command == "xrandr" ? "A connected 1700x1100+0+0" : "live_processing: running for now";
      stage.provide_script(command, "printf '%s' '" + words + "'\n" + end);
    };
  };
  return {
      {"WithoutEndOfLine", dying_by("")},
      {"FailingAfterwards", dying_by("exit 77\n")},
      {"SegmentationFault", dying_by("kill -SEGV $$\n")},
      {"Killed", dying_by("kill -KILL $$\n")},
      {"WithoutReader", dying_by("kill -PIPE $$\n")},
  };
}

class DyingTool : public SilentTool {};

INSTANTIATE_TEST_SUITE_P(Ends, DyingTool, ::testing::ValuesIn(last_words()), fault_name);

TEST_P(DyingTool, ScreenItNamedCounts) {
  inflict("xrandr");
  EXPECT_EQ(screen(), "1700x1100(xrandr)");
}

TEST_P(DyingTool, StateItNamedCounts) {
  inflict("sonmerectl");
  inflict("systemctl");
  DesktopRun run(stage_, {in_readable_window({"--no-camera"})});
  ExpectedDashboard scene = camera_less_scene("combo");
  scene.status.voice.live_processing = "running for now";
  scene.status.voice.live_running = true;
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
}

}  // namespace
}  // namespace halcyra
