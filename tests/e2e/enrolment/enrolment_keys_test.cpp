// The keys of the enrolment window, and the other ways to end a run.
#include <signal.h>

#include <chrono>

#include <gtest/gtest.h>

#include "tests/e2e/enrolment/enrolment_run.hpp"
#include "tests/e2e/waiting.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

using EnrolmentKeys = EnrolmentRun;

// So many that the run is never done.
const std::vector<std::string> kMany = {"--per-pose", "1000"};

TEST_F(EnrolmentKeys, SpacePausesAndGoesOn) {
  record_all_poses();
  start(kMany);
  desktop_.press("space");
  EXPECT_TRUE(shows("Paused: press space to go on"));
  const std::vector<std::string> before = samples();
  // By then the run would be past the seconds in which it takes nothing anyway.
  const auto later = std::chrono::steady_clock::now() + std::chrono::seconds(4);
  EXPECT_TRUE(wait_until([&] { return std::chrono::steady_clock::now() > later; }));
  EXPECT_TRUE(shows_new_pictures(12));
  EXPECT_EQ(samples(), before);
  desktop_.press("space");
  EXPECT_TRUE(wait_until([&] { return samples().size() > before.size(); }));
}

TEST_F(EnrolmentKeys, UTakesBackTheLastSamples) {
  record_all_poses();
  start(kMany);
  EXPECT_TRUE(wait_until([&] { return samples().size() >= 3; }));
  desktop_.press("space");
  EXPECT_TRUE(shows("Paused: press space to go on"));
  std::vector<std::string> taken = output_lines();
  ASSERT_EQ(taken.size(), samples().size());
  while (!taken.empty()) {
    const std::size_t name = std::string("taken ").size();
    const std::string file = taken.back().substr(name, taken.back().find(" (") - name);
    taken.pop_back();
    desktop_.press(taken.size() % 2 == 0 ? "U" : "u");
    EXPECT_TRUE(says("taken back " + file + " (")) << program_->output();
    EXPECT_FALSE(std::filesystem::exists(stage_.samples_folder() / file));
    EXPECT_EQ(samples().size(), taken.size());
  }
  EXPECT_EQ(lines_that_begin("taken back front/"), lines_that_begin("taken front/"));
  desktop_.press("u");  // there is none left
  ASSERT_TRUE(quit());
  EXPECT_EQ(lines_that_begin("Taken: front 0, left 0, right 0"), 1);
}

TEST_F(EnrolmentKeys, ULeavesAFileThatSomebodyElseHasWritten) {
  record(enrolment_picture("front-0"));
  start({"--per-pose", "1"});
  EXPECT_TRUE(says("taken front/"));
  desktop_.press("space");
  EXPECT_TRUE(shows("Paused: press space to go on"));
  const std::filesystem::path file = stage_.samples_folder() / samples().at(0);
  write_text(file, "somebody else's");
  desktop_.press("u");
  EXPECT_TRUE(wait_until([&] {
    return program_->errors().find("is no longer the file that was written; it is left.") !=
           std::string::npos;
  }));
  EXPECT_EQ(read_text(file), "somebody else's");
  EXPECT_EQ(lines_that_begin("taken back"), 0);
}

TEST_F(EnrolmentKeys, NSkipsTheAskedPose) {
  record(enrolment_picture("front-0"));
  start({"--per-pose", "1"});
  EXPECT_TRUE(shows("Turn your head until the camera sees your left cheek"));
  desktop_.press("n");
  EXPECT_TRUE(shows("Turn your head until the camera sees your right cheek"));
  desktop_.press("N");
  EXPECT_TRUE(shows("Done"));
  desktop_.press("n");
  ASSERT_TRUE(quit());
  EXPECT_EQ(lines_that_begin("Taken: front 1, left 0, right 0"), 1);
}

TEST_F(EnrolmentKeys, SkippedPosesAreNotTaken) {
  record_all_poses();
  start({"--per-pose", "4"});
  desktop_.press("n");
  EXPECT_TRUE(shows("Turn your head until the camera sees your left cheek"));
  const int front = lines_that_begin("taken front/");
  EXPECT_TRUE(shows("Done"));
  EXPECT_EQ(lines_that_begin("taken front/"), front);
  EXPECT_EQ(lines_that_begin("taken left/"), 4);
  EXPECT_EQ(lines_that_begin("taken right/"), 4);
}

class EnrolmentEnd : public EnrolmentRun {
 protected:
  // After a run that took nothing, in good order.
  void expect_end() {
    const std::optional<ProcessEnd> end = program_->wait_for_end();
    ASSERT_TRUE(end) << "still running";
    EXPECT_EQ(end->exit_status, 1);
    EXPECT_EQ(lines_that_begin("Taken: front 0, left 0, right 0"), 1);
    EXPECT_EQ(program_->errors(), "There are no samples in faces/dorran.\n");
  }
};

TEST_F(EnrolmentEnd, ComesWithQAndEscape) {
  record(enrolment_picture("far-0"));
  for (const char* key : {"q", "Q", "Escape"}) {
    SCOPED_TRACE(key);
    start({});
    desktop_.press(key);
    expect_end();
  }
}

TEST_F(EnrolmentEnd, ComesWithASignal) {
  record(enrolment_picture("far-0"));
  for (const int signal : {SIGINT, SIGTERM}) {
    SCOPED_TRACE(signal);
    start({});
    ASSERT_EQ(kill(program_->id(), signal), 0);
    expect_end();
  }
}

TEST_F(EnrolmentEnd, ComesWithTheCloseButton) {
  record(enrolment_picture("far-0"));
  start({});
  EXPECT_TRUE(shows("Come closer"));
  desktop_.ask_to_close();
  expect_end();
  EXPECT_FALSE(desktop_.follow_window());
}

TEST_F(EnrolmentEnd, ComesWithTheCloseButtonWhileTheSensorStalls) {
  recording_.set_device("pace: 0\nafter: stall\n");
  record(enrolment_picture("far-0"));
  start({});
  EXPECT_TRUE(shows("Waiting for the sensor"));
  desktop_.ask_to_close();
  expect_end();
}

}  // namespace
}  // namespace halcyra
