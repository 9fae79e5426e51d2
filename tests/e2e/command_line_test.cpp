// The program as scripts start it: exit status, standard output and standard error.
#include <signal.h>

#include <regex>

#include <gtest/gtest.h>

#include "tests/e2e/command_line_cases.hpp"
#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/program.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

std::string usage_text() {
  return std::string("Usage: ") + HALCYRA_PROGRAM +
         " [--frames N] [--no-camera] [--smoke] [--detector-type TYPE]"
         " [--screen-percent P] [--width PX] [--height PX] [--font-scale S]"
         " [--fullscreen] [--windowed] [--preset compact|normal|large] [--view VIEW]"
         " [--overlay-mode MODE] [--layout-test]\n"
         "  Professional local Halcyra Control Center dashboard.\n"
         "  Default: detect the display, open a resizable window at about 75% of the screen, and"
         " render text at the active dashboard size.\n"
         "  Views: rgb, ir, depth, skeletal, combo, room_overview, follow."
         " --overlay-mode remains accepted for older scripts.\n"
         "  Keys: q/Esc quit, 1 RGB, 2 IR, 3 Depth, 4 Skeletal, 5 Combo, 6 Room Overview,"
         " 7 Follow, m mic HUD, b debug, Tab target, v refresh, k start voice, t stop voice.\n";
}

std::map<std::string, std::string> default_summary() {
  return {{"frames", "1"},
          {"kinect", "unavailable"},
          {"rgb", "unavailable"},
          {"ir", "unavailable"},
          {"depth", "unavailable"},
          {"size", "1440x810"},
          {"screen", "1920x1080(xrandr)"},
          {"screen_percent", "0.75"},
          {"font_scale", "1.1"},
          {"window", "normal"},
          {"current_view", "combo"},
          {"samples_loaded", "0"},
          {"model_path", "trained_in_memory_from_faces/dorran"},
          {"candidate_threshold", "60"},
          {"confirmed_threshold", "55"},
          {"cc_unknown_predictions", "0"},
          {"cc_candidate_dorran_predictions", "0"},
          {"cc_confirmed_dorran_predictions", "0"},
          {"cc_last_label", "Unknown"},
          {"cc_last_detector_type", "none"},
          {"cc_last_face_box", "none"},
          {"cc_last_confidence", "0"},
          {"cc_last_quality", "no_face"},
          {"cc_last_stage", "unknown"}};
}

std::string case_name(const ::testing::TestParamInfo<CommandLineCase>& info) {
  return info.param.name;
}

class CommandLine : public ::testing::TestWithParam<CommandLineCase> {
 protected:
  CommandLine() { stage_.answer("xrandr --current", "screen connected primary 1920x1080+0+0\n"); }

  void run(const std::vector<std::string>& arguments) {
    Program program(stage_, {arguments});
    const std::optional<ProcessEnd> end = program.wait_for_end();
    ASSERT_TRUE(end) << "still running";
    end_ = *end;
    output_ = program.output();
    errors_ = program.errors();
  }

  // Ended by the uncaught exception, before anything was written.
  void expect_abort(const std::vector<std::string>& arguments) {
    run(arguments);
    EXPECT_EQ(end_.signal, SIGABRT);
    EXPECT_EQ(output_, "");
    EXPECT_NE(errors_.find("terminate called"), std::string::npos) << errors_;
  }

  Stage stage_;
  ProcessEnd end_;
  std::string output_;
  std::string errors_;
};

class AcceptedLine : public CommandLine {};
class RejectedLine : public CommandLine {};
class HelpLine : public CommandLine {};
class AbortingLine : public CommandLine {};

TEST_P(AcceptedLine, RunsAndSaysSo) {
  run(GetParam().arguments);
  EXPECT_EQ(end_.exit_status, 0) << errors_;
  EXPECT_EQ(errors_.find("unknown argument"), std::string::npos);
  std::map<std::string, std::string> expected = default_summary();
  for (const auto& [name, value] : GetParam().summary) expected[name] = value;
  std::map<std::string, std::string> summary = summary_values(output_);
  EXPECT_EQ(summary.erase("fps"), 1U);
  EXPECT_EQ(summary, expected);
}

TEST_P(RejectedLine, ShowsTheUsageAndFails) {
  run(GetParam().arguments);
  EXPECT_EQ(end_.exit_status, 2);
  EXPECT_EQ(output_, usage_text());
  EXPECT_EQ(errors_, GetParam().complaint);
  EXPECT_EQ(stage_.calls(), std::vector<std::string>{});
}

TEST_P(HelpLine, ShowsTheUsage) {
  run(GetParam().arguments);
  EXPECT_EQ(end_.exit_status, 0);
  EXPECT_EQ(output_, usage_text());
  EXPECT_EQ(errors_, "");
}

TEST_P(AbortingLine, EndsWithTheException) { expect_abort(GetParam().arguments); }

INSTANTIATE_TEST_SUITE_P(Lines, AcceptedLine, ::testing::ValuesIn(accepted_lines()), case_name);
INSTANTIATE_TEST_SUITE_P(Lines, RejectedLine, ::testing::ValuesIn(rejected_lines()), case_name);
INSTANTIATE_TEST_SUITE_P(Lines, HelpLine, ::testing::ValuesIn(help_lines()), case_name);
INSTANTIATE_TEST_SUITE_P(Lines, AbortingLine, ::testing::ValuesIn(aborting_lines()), case_name);

using Files = CommandLine;

const std::vector<std::string> kShortRun = {"--no-camera", "--frames", "1"};

std::vector<std::string> short_run_with(const std::string& option, const std::string& value) {
  std::vector<std::string> arguments = kShortRun;
  arguments.insert(arguments.end(), {option, value});
  return arguments;
}

TEST_F(Files, SummaryIsOneLineInTheAgreedOrder) {
  run(kShortRun);
  const std::regex expected(
      "Halcyra Control Center exit: frames=1 fps=[0-9.e+-]+ kinect=unavailable rgb=unavailable"
      " ir=unavailable depth=unavailable size=1440x810 screen=1920x1080\\(xrandr\\)"
      " screen_percent=0.75 font_scale=1.1 window=normal current_view=combo samples_loaded=0"
      " model_path=trained_in_memory_from_faces/dorran candidate_threshold=60"
      " confirmed_threshold=55 cc_unknown_predictions=0 cc_candidate_dorran_predictions=0"
      " cc_confirmed_dorran_predictions=0 cc_last_label=Unknown cc_last_detector_type=none"
      " cc_last_face_box=none cc_last_confidence=0 cc_last_quality=no_face"
      " cc_last_stage=unknown\n");
  EXPECT_TRUE(std::regex_match(output_, expected)) << output_;
}

TEST_F(Files, SamplesPathThatIsAFileAborts) {
  write_text(stage_.working_folder() / "samples", "no folder");
  expect_abort(short_run_with("--samples-dir", "samples"));
}

TEST_F(Files, CascadeThatIsNoCascadeAborts) {
  write_text(stage_.working_folder() / "empty.xml", "");
  write_text(stage_.working_folder() / "other.xml",
             "<?xml version=\"1.0\"?>\n<opencv_storage><a>1</a></opencv_storage>\n");
  std::filesystem::create_directories(stage_.working_folder() / "folder.xml");
  for (const std::string option : {"--cascade", "--profile-cascade"}) {
    for (const std::string file : {"empty.xml", "other.xml", "folder.xml"}) {
      SCOPED_TRACE(option + " " + file);
      expect_abort(short_run_with(option, file));
    }
  }
}

TEST_F(Files, EmptySamplesFolderIsNoSamples) {
  std::filesystem::create_directories(stage_.samples_folder());
  run(kShortRun);
  EXPECT_EQ(end_.exit_status, 0);
  EXPECT_EQ(summary_values(output_)["samples_loaded"], "0");
}

// The summary is all that a run writes.
TEST_F(Files, RunLeavesNoFilesBehind) {
  std::filesystem::remove_all(stage_.working_folder() / "install");
  run(kShortRun);
  EXPECT_TRUE(std::filesystem::is_empty(stage_.working_folder()));
  EXPECT_TRUE(std::filesystem::is_empty(stage_.home()));
}

}  // namespace
}  // namespace halcyra
