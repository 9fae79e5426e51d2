// Runs where the environment names no display.
#include <algorithm>

#include <gtest/gtest.h>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/program.hpp"

namespace halcyra {
namespace {

const std::vector<std::string> kDisplayVariables = {"DISPLAY", "WAYLAND_DISPLAY",
                                                    "QT_QPA_PLATFORM"};

class NoDisplay : public ::testing::Test {
 protected:
  static ProgramStart start(const std::vector<std::string>& arguments) {
    ProgramStart result{arguments};
    result.unset = kDisplayVariables;
    return result;
  }

  void run(const ProgramStart& start) {
    Program program(stage_, start);
    const std::optional<ProcessEnd> end = program.wait_for_end();
    ASSERT_TRUE(end) << "still running";
    end_ = *end;
    output_ = program.output();
    errors_ = program.errors();
  }

  // One line that says so, status 1, and nothing done before.
  void expect_refusal() {
    EXPECT_EQ(end_.signal, 0);
    EXPECT_EQ(end_.exit_status, 1);
    EXPECT_EQ(output_, "");
    EXPECT_EQ(errors_,
              "No display: none of DISPLAY, WAYLAND_DISPLAY and QT_QPA_PLATFORM is set. "
              "QT_QPA_PLATFORM=offscreen runs without one.\n");
    EXPECT_EQ(stage_.calls(), std::vector<std::string>{});
    EXPECT_FALSE(std::filesystem::exists(stage_.working_folder() / "captures"));
  }

  Stage stage_;
  ProcessEnd end_;
  std::string output_;
  std::string errors_;
};

TEST_F(NoDisplay, EndsTheRunWithOneLine) {
  run(start({"--layout-test", "--frames", "1"}));
  expect_refusal();
}

TEST_F(NoDisplay, IsWhatEmptyVariablesSayToo) {
  ProgramStart empty{{"--no-camera", "--frames", "1"}};
  for (const std::string& name : kDisplayVariables) empty.environment[name] = "";
  run(empty);
  expect_refusal();
}

TEST_F(NoDisplay, IsNotNoticedBeforeTheCommandLine) {
  run(start({"--help"}));
  EXPECT_EQ(end_.exit_status, 0);
  EXPECT_EQ(output_.rfind("Usage: ", 0), 0U);
  EXPECT_EQ(errors_, "");

  run(start({"--no-such-option"}));
  EXPECT_EQ(end_.exit_status, 2);
  EXPECT_EQ(output_.rfind("Usage: ", 0), 0U);
  EXPECT_EQ(errors_.find("No display"), std::string::npos);
}

// The recorded window takes the calls, so that no variable has to lead to a real display.
TEST_F(NoDisplay, IsNotSaidWhereOneVariableIsSet) {
  for (const std::string& name : kDisplayVariables) {
    SCOPED_TRACE(name);
    ProgramStart one = start({"--no-camera", "--frames", "1"});
    one.unset.erase(std::find(one.unset.begin(), one.unset.end(), name));
    one.environment = {{name, "offscreen"},
                       {"LD_PRELOAD", HALCYRA_RECORDED_WINDOW},
                       {"RECORDED_WINDOW", stage_.folder().string()}};
    run(one);
    EXPECT_EQ(end_.exit_status, 0);
    EXPECT_NE(summary_line(output_), "");
    EXPECT_EQ(errors_, "");
  }
}

TEST_F(NoDisplay, IsNeededByNoRunThatDrawsIntoMemory) {
  ProgramStart offscreen = start({"--no-camera", "--frames", "1"});
  offscreen.unset = {"DISPLAY", "WAYLAND_DISPLAY"};
  run(offscreen);
  EXPECT_EQ(end_.exit_status, 0);
  EXPECT_NE(summary_line(output_), "");
}

}  // namespace
}  // namespace halcyra
