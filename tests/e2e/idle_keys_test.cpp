// Keys without a command must do nothing, above all those whose code has the low byte of a letter.
#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/recording.hpp"
#include "tests/e2e/waiting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

// The recording alternates between two pictures, one per turn of the loop, so that turns can be
// counted from outside.
class IdleKeys : public ::testing::Test {
 protected:
  static ProgramStart start(const Stage& stage) {
    Recording recording(stage.folder() / "recording");
    recording.set_device("pace: 0\n");
    for (const int brightness : {60, 61}) {
      recording.add_color(cv::Mat(60, 80, CV_8UC3, cv::Scalar::all(brightness)));
      recording.add_infrared(cv::Mat(4, 4, CV_16UC1, cv::Scalar(0)));
      recording.add_depth(cv::Mat(4, 4, CV_16UC1, cv::Scalar(0)));
    }
    return {in_readable_window({"--view", "rgb", "--smoke", "--frames", "0"}),
            "",
            {{"VIRTUAL_KINECT", recording.folder().string()}}};
  }

  IdleKeys() : run_(stage_, start(stage_)) {}

  void SetUp() override {
    ASSERT_TRUE(run_.wait_for_message("No person visible"));
    even_ = run_.desktop().screenshot();
    ASSERT_TRUE(wait_for_other_than(even_));
    odd_ = seen_;
    ASSERT_TRUE(wait_for_other_than(odd_));
    ASSERT_TRUE(same_pixels(seen_, even_)) << "the dashboard does not stand still by itself";
  }

  bool wait_for_other_than(const cv::Mat picture) {
    return wait_until([&] {
      seen_ = run_.desktop().screenshot();
      return !seen_.empty() && !same_pixels(seen_, picture);
    });
  }

  // Every new picture must be one of the two known ones.
  void expect_unmoved_dashboard(int turns) {
    for (int turn = 0; turn < turns; ++turn) {
      ASSERT_TRUE(wait_for_other_than(seen_)) << "the program stands still";
      ASSERT_TRUE(same_pixels(seen_, even_) || same_pixels(seen_, odd_))
          << "events: " << ::testing::PrintToString(run_.messages());
    }
  }

  // Two turns for each key: in the one it is pressed in, it may come too late for the key wait.
  // What a command does stays on the dashboard, in the event log at least, so that it is seen two
  // turns later, with the keys that follow.
  void expect_idle(const std::vector<std::string>& keys) {
    for (const std::string& key : keys) {
      SCOPED_TRACE(key + " or the key before it");
      run_.desktop().press(key);
      expect_unmoved_dashboard(2);
      if (HasFatalFailure()) return;
    }
    expect_unmoved_dashboard(2);
    if (HasFatalFailure()) return;
    EXPECT_TRUE(run_.program().running());
    EXPECT_EQ(voice_commands(), std::set<std::string>{});
    // The program took keys all the time.
    run_.desktop().press("b");
    EXPECT_TRUE(run_.wait_for_message("Debug boxes/detail enabled"));
  }

  std::set<std::string> voice_commands() const {
    std::set<std::string> commands;
    for (const std::string& call : stage_.calls()) {
      if (call.rfind("sonmerectl ", 0) == 0 && call.find("status") == std::string::npos) {
        commands.insert(call);
      }
    }
    return commands;
  }

  Stage stage_;
  DesktopRun run_;
  cv::Mat even_;
  cv::Mat odd_;
  cv::Mat seen_;
};

TEST_F(IdleKeys, CursorAndPaging) {
  expect_idle({"Left", "Right", "Up", "Down", "Prior", "Next", "Home", "End", "Insert", "Delete",
               "BackSpace", "Return", "space"});
}

TEST_F(IdleKeys, Function) {
  expect_idle({"F1", "F2", "F3", "F4", "F5", "F6", "F7", "F8", "F9", "F10", "F11", "F12"});
}

// The lock keys are pressed twice, to be off again.
TEST_F(IdleKeys, Modifiers) {
  expect_idle({"Shift_L", "Shift_R", "Control_L", "Control_R", "Alt_L", "Super_L", "Super_R",
               "Caps_Lock", "Caps_Lock", "Num_Lock", "Num_Lock", "Scroll_Lock", "Scroll_Lock",
               "Pause", "Print", "Menu"});
}

TEST_F(IdleKeys, KeypadNavigation) {
  expect_idle({"KP_Left", "KP_Right", "KP_Up", "KP_Down", "KP_Begin", "KP_Home", "KP_End",
               "KP_Prior", "KP_Next", "KP_Insert", "KP_Delete", "KP_Enter"});
}

TEST_F(IdleKeys, OtherCharacters) {
  expect_idle({"c", "e", "g", "h", "j", "l", "n", "p",     "r",     "s",     "u",
               "w", "y", "R", "S", "0", "8", "9", "slash", "minus", "exclam"});
}

}  // namespace
}  // namespace halcyra
