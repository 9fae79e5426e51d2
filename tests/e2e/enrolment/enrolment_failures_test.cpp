// What halcyra-enroll says when something is missing or fails.
#include <filesystem>

#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>

#include "tests/e2e/enrolment/enrolment_run.hpp"
#include "tests/e2e/waiting.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

class EnrolmentFailure : public EnrolmentRun {
 protected:
  // One sentence, status 1, and nothing on standard output.
  void expect_failure(const ProgramStart& start, const std::string& sentence) {
    const ProcessEnd end = run_to_end(start);
    EXPECT_EQ(end.signal, 0);
    EXPECT_EQ(end.exit_status, 1);
    EXPECT_EQ(program_->errors(), sentence + "\n");
    EXPECT_EQ(program_->output(), "");
  }

  static ProgramStart without_display(ProgramStart start) {
    start.unset = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    return start;
  }

  static ProgramStart without_sensor(ProgramStart start) {
    start.environment = {};
    return start;
  }

  static std::string unusable(const std::string& cascade) {
    return cascade + " cannot be used as a face cascade. It is in Debian's package opencv-data.";
  }
};

TEST_F(EnrolmentFailure, IsSaidForAMissingSensor) {
  expect_failure(without_sensor(start_of({})),
                 "The sensor cannot be used: no Kinect v2 device detected.");
}

TEST_F(EnrolmentFailure, IsSaidForASensorThatDoesNotOpenOrStart) {
  record(enrolment_picture("far-0"));
  recording_.set_device("open: fail\n");
  expect_failure(start_of({}), "The sensor cannot be used: failed to open Kinect device.");
  recording_.set_device("start: fail\n");
  expect_failure(start_of({}), "The sensor cannot be used: failed to start RGB/IR/Depth streams.");
}

TEST_F(EnrolmentFailure, IsSaidForMissingCascades) {
  expect_failure(start_of({"--cascade", "none.xml"}), unusable("none.xml"));
  expect_failure(start_of({"--profile-cascade", "none.xml"}), unusable("none.xml"));
  EXPECT_FALSE(fs::exists(stage_.samples_folder()));
}

TEST_F(EnrolmentFailure, IsSaidForAFileThatIsNoCascade) {
  write_text(stage_.working_folder() / "list.xml",
             "<?xml version=\"1.0\"?><opencv_storage><list>1 2</list></opencv_storage>");
  expect_failure(start_of({"--cascade", "list.xml"}), unusable("list.xml"));
}

TEST_F(EnrolmentFailure, IsSaidForAFolderThatMayNotBeWritten) {
  fs::create_directories(stage_.samples_folder());
  fs::permissions(stage_.samples_folder(), fs::perms::owner_read | fs::perms::owner_exec);
  record(enrolment_picture("far-0"));
  ProgramStart bound = start_of({});
  bound.bound_by_modes = true;
  expect_failure(bound, "No samples can be written to faces/dorran/front: Permission denied.");
  fs::permissions(stage_.samples_folder(), fs::perms::owner_all);
}

TEST_F(EnrolmentFailure, IsSaidForAFolderOfWhichAPartMayNotBeRead) {
  const fs::path closed = stage_.samples_folder() / "closed";
  fs::create_directories(closed);
  fs::permissions(closed, fs::perms::none);
  record(enrolment_picture("far-0"));
  ProgramStart bound = start_of({});
  bound.bound_by_modes = true;
  EXPECT_EQ(run_to_end(bound).exit_status, 1);
  EXPECT_EQ(program_->errors().rfind("The samples in faces/dorran cannot be read: ", 0), 0U)
      << program_->errors();
  fs::permissions(closed, fs::perms::owner_all);
}

TEST_F(EnrolmentFailure, IsSaidForAMissingDisplay) {
  expect_failure(without_display(start_of({})),
                 "No display: none of DISPLAY, WAYLAND_DISPLAY and QT_QPA_PLATFORM is set. "
                 "QT_QPA_PLATFORM=offscreen runs without one.");
  EXPECT_FALSE(fs::exists(stage_.samples_folder()));
}

// Display, cascade, folder, sensor: in this order.
TEST_F(EnrolmentFailure, IsTheFirstOfSeveral) {
  write_text(stage_.samples_folder(), "a file");
  ProgramStart all = without_sensor(start_of({"--cascade", "none.xml"}));
  EXPECT_EQ(run_to_end(without_display(all)).exit_status, 1);
  EXPECT_EQ(program_->errors().rfind("No display", 0), 0U);
  expect_failure(all, unusable("none.xml"));
  all.arguments.clear();
  expect_failure(all, "No samples can be written to faces/dorran/front: Not a directory.");
}

TEST_F(EnrolmentFailure, OfWritingEndsTheTakingButNotTheRun) {
  record_all_poses();
  // So that there is something to report on, whatever is taken first.
  fs::create_directories(stage_.samples_folder() / "front");
  ASSERT_TRUE(
      cv::imwrite(stage_.samples_folder() / "front/earlier.png", enrolment_picture("far-0")));
  start({"--per-pose", "1000"});
  desktop_.press("space");
  EXPECT_TRUE(shows("Paused: press space to go on"));
  fs::remove_all(stage_.samples_folder() / "left");
  fs::remove_all(stage_.samples_folder() / "right");
  desktop_.press("space");
  const std::string left =
      "No samples can be written to faces/dorran/left: "
      "No such file or directory.";
  const std::string right =
      "No samples can be written to faces/dorran/right: "
      "No such file or directory.";
  EXPECT_TRUE(wait_until([&] { return program_->errors().find('\n') != std::string::npos; }));
  const std::string said = program_->errors();
  EXPECT_TRUE(said == left + "\n" || said == right + "\n") << said;
  EXPECT_TRUE(shows(said == left + "\n" ? left : right));
  const std::vector<std::string> files = samples();
  EXPECT_TRUE(shows_new_pictures(12));
  EXPECT_EQ(samples(), files);
  const std::optional<ProcessEnd> end = quit();
  ASSERT_TRUE(end);
  EXPECT_EQ(end->exit_status, 1);
  EXPECT_EQ(program_->errors(), said);
}

TEST_F(EnrolmentFailure, OfUseIsToldWithTheUsage) {
  EXPECT_EQ(run_to_end(start_of({"--smile"})).exit_status, 2);
  EXPECT_EQ(program_->output(), "");
  EXPECT_EQ(program_->errors().rfind("There is no option \"--smile\".\nUsage: ", 0), 0U)
      << program_->errors();
}

TEST_F(EnrolmentFailure, IsNotHelpOrVersion) {
  EXPECT_EQ(run_to_end(without_display(start_of({"--help"}))).exit_status, 0);
  EXPECT_EQ(program_->output().rfind("Usage: ", 0), 0U);
  EXPECT_EQ(program_->errors(), "");
  EXPECT_EQ(run_to_end(without_display(start_of({"--version"}))).exit_status, 0);
  EXPECT_EQ(program_->output().rfind("halcyra-enroll ", 0), 0U);
}

}  // namespace
}  // namespace halcyra
