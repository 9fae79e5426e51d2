// The whole demonstration, as a person without sensor and display starts it.
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "tests/e2e/child_process.hpp"
#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/exit_summary_line.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

class Demonstration : public ::testing::Test {
 protected:
  Demonstration() {
    fs::create_directories(folder_.path() / "here");
    fs::create_directories(folder_.path() / "person");
    fs::create_directories(build());
    fs::create_symlink(HALCYRA_PROGRAM, build() / "halcyra-control-center");
    fs::copy(HALCYRA_DEMONSTRATION, build() / "demonstration",
             fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    write_text(build() / "kinect-driver", "virtual\n");
  }

  fs::path build() const { return folder_.path() / "build"; }

  // Runs it to its end and returns what it printed.
  std::string output_of(const std::vector<std::string>& arguments) const {
    ProcessStart start;
    start.executable = HALCYRA_SCRIPTS "/start.sh";
    start.arguments = {build().string()};
    start.arguments.insert(start.arguments.end(), arguments.begin(), arguments.end());
    start.environment = {{"PATH", "/usr/bin:/bin"}, {"HOME", (folder_.path() / "person").string()}};
    // An instrumented build finds its list of known leaks here.
    if (const char* options = std::getenv("LSAN_OPTIONS")) {
      start.environment["LSAN_OPTIONS"] = options;
    }
    start.working_folder = folder_.path() / "here";
    start.stdout_file = folder_.path() / "output";
    start.stderr_file = folder_.path() / "errors";
    ChildProcess process(start);
    const std::optional<ProcessEnd> end = process.wait_for_end();
    EXPECT_TRUE(end && end->exit_status == 0) << read_text(start.stderr_file);
    return read_text(start.stdout_file);
  }

  cv::Mat window_picture() const { return cv::imread((build() / "dashboard.png").string()); }

  TemporaryFolder folder_;
};

// The number of frames is the scripts' own: a picture is taken while the window is there for
// seconds.
TEST_F(Demonstration, RunsOnAVirtualDisplayAndKeepsAPicture) {
  const std::string output = output_of({});
  std::map<std::string, std::string> summary = summary_values(output);
  EXPECT_EQ(summary["frames"], "90");
  EXPECT_EQ(summary["kinect"], "connected");
  EXPECT_EQ(summary["rgb"], "OK");
  EXPECT_EQ(summary["ir"], "OK");
  EXPECT_EQ(summary["depth"], "OK");
  EXPECT_EQ(summary["samples_loaded"], "24");
  EXPECT_EQ(window_picture().size(), cv::Size(1440, 810));
  EXPECT_NE(output.find("Picture of the window: " + (build() / "dashboard.png").string() + "\n"),
            std::string::npos);
}

TEST_F(Demonstration, TouchesNothingOfTheUsers) {
  output_of({"--frames", "2"});
  EXPECT_TRUE(fs::is_empty(folder_.path() / "here"));
  EXPECT_TRUE(fs::is_empty(folder_.path() / "person"));
}

TEST_F(Demonstration, KnowsTheOwnerAndHearsHim) {
  const Stage stage;
  ProgramStart start{in_readable_window({}), "", {{"PATH", "/usr/bin:/bin"}}};
  start.executable = HALCYRA_DEMO "/demonstrate";
  start.arguments.insert(start.arguments.begin(), (build() / "demonstration").string());
  DesktopRun run(stage, start);
  run.expect_messages({"voice direction matched Dorran"});
  EXPECT_TRUE(run.wait_for_message("Identity confirmed: Dorran via frontal"));
  EXPECT_TRUE(run.wait_for_message("voice direction matched Dorran"));
  EXPECT_TRUE(run.quit());
}

TEST_F(Demonstration, MakesWayForADegradedStart) {
  const std::string output = output_of({"--no-camera", "--frames", "90"});
  EXPECT_EQ(output.find("demonstration"), std::string::npos);
  std::map<std::string, std::string> summary = summary_values(output);
  EXPECT_EQ(summary["kinect"], "unavailable");
  EXPECT_EQ(summary["frames"], "90");
  EXPECT_EQ(window_picture().size(), cv::Size(1440, 810));
}

}  // namespace
}  // namespace halcyra
