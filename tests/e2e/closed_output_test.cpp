// Standard streams that are closed, full or without a reader: the run does all its work and ends
// with status 0.
#include <gtest/gtest.h>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/sensor_run.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

using Streams = std::vector<int>;

struct StreamsCase {
  std::string name;
  OddStreams streams;
};

void PrintTo(const StreamsCase& test_case, std::ostream* stream) { *stream << test_case.name; }

std::vector<StreamsCase> streams_cases() {
  return {
      {"InputClosed", {Streams{0}}},
      {"OutputClosed", {Streams{1}}},
      {"ErrorsClosed", {Streams{2}}},
      {"AllClosed", {Streams{0, 1, 2}}},
      {"OutputFull", {{}, Streams{1}}},
      {"OutputAndErrorsFull", {{}, Streams{1, 2}}},
      {"OutputWithoutReader", {{}, {}, Streams{1}}},
      {"OutputAndErrorsWithoutReader", {{}, {}, Streams{1, 2}}},
  };
}

std::string case_name(const ::testing::TestParamInfo<StreamsCase>& info) { return info.param.name; }

// What a descriptor of a process refers to.
std::string open_as(pid_t process, int descriptor) {
  return std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/fd/" +
                                       std::to_string(descriptor))
      .string();
}

class StandardStreams : public SensorRun, public ::testing::WithParamInterface<StreamsCase> {
 protected:
  ProgramStart odd(ProgramStart start) const {
    start.streams = GetParam().streams;
    return start;
  }

  void expect_good_end(const ProgramStart& start) {
    Program program(stage_, start);
    const std::optional<ProcessEnd> end = program.wait_for_end();
    ASSERT_TRUE(end);
    EXPECT_EQ(end->signal, 0);
    EXPECT_EQ(end->exit_status, 0);
  }
};

INSTANTIATE_TEST_SUITE_P(Odd, StandardStreams, ::testing::ValuesIn(streams_cases()), case_name);

// The connection to the window system and the pipes must not get the number of a closed stream.
TEST_P(StandardStreams, DoNotMatterToTheDashboard) {
  add_good_sets(1);
  DesktopRun run(stage_, odd(start({})));
  EXPECT_EQ(run.wait_for(running_scene("combo")), "");
  for (const int descriptor : GetParam().streams.closed) {
    EXPECT_EQ(open_as(run.program().id(), descriptor), "/dev/null");
  }
  run.desktop().press("v");
  EXPECT_TRUE(run.wait_for_message("Status refreshed"));
  EXPECT_TRUE(run.quit());
}

TEST_P(StandardStreams, DoNotMatterToTheLayoutImage) {
  expect_good_end(odd(start({"--layout-test", "--frames", "1"})));
  EXPECT_TRUE(std::filesystem::exists(stage_.working_folder() /
                                      "captures/control-center-layout-test-1440x1080.png"));
}

TEST_P(StandardStreams, DoNotMatterToHelp) { expect_good_end(odd({{"--help"}})); }

// The virtual Kinect reports the missing recording on standard error.
TEST_P(StandardStreams, DoNotMatterToADriverThatComplains) {
  ProgramStart without_window = odd(start({"--frames", "2"}));
  without_window.environment["VIRTUAL_KINECT"] = "/no/such/recording";
  expect_good_end(without_window);
}

// A command whose reader goes away must still end by SIGPIPE.
TEST_P(StandardStreams, LeaveTheCommandsTheirInputAndTheirSignals) {
  const std::filesystem::path seen = stage_.folder() / "seen";
  stage_.provide_script("sonmerectl", "exec 3>'" + seen.string() +
                                          "'\n/usr/bin/readlink /proc/self/fd/0 >&3\n"
                                          "/bin/sh -c 'kill -PIPE $$'\necho $? >&3\n");
  expect_good_end(odd({{"--no-camera", "--frames", "1"}}));
  EXPECT_EQ(read_text(seen), "/dev/null\n141\n");
}

}  // namespace
}  // namespace halcyra
