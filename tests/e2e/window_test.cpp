// The window in the hands of its user: resized, closed, full screen, managed or not.
#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/scenes.hpp"
#include "tests/e2e/waiting.hpp"
#include "tests/e2e/window_manager.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

ProgramStart camera_less_start(const std::vector<std::string>& arguments = {}) {
  ProgramStart start{in_readable_window({"--no-camera"})};
  start.arguments.insert(start.arguments.end(), arguments.begin(), arguments.end());
  return start;
}

ExpectedDashboard scene_of_size(cv::Size size) {
  ExpectedDashboard scene = camera_less_scene("combo");
  scene.options.width = size.width;
  scene.options.height = size.height;
  return scene;
}

class Window : public ::testing::Test {
 protected:
  Stage stage_;
};

TEST_F(Window, DashboardFollowsItsSize) {
  DesktopRun run(stage_, camera_less_start());
  ASSERT_EQ(run.wait_for(camera_less_scene("combo")), "");
  for (const cv::Size size : {cv::Size(800, 480), cv::Size(1919, 600), cv::Size(801, 1199),
                              cv::Size(1119, 619), cv::Size(1120, 620), cv::Size(1003, 777)}) {
    SCOPED_TRACE(size);
    run.desktop().resize(size);
    EXPECT_EQ(run.wait_for(scene_of_size(size)), "");
  }
  EXPECT_TRUE(run.quit());
  std::map<std::string, std::string> summary = summary_values(run.program().output());
  EXPECT_EQ(summary["size"], "1440x1080");
  EXPECT_EQ(summary["font_scale"], "0.86");
}

// Each key takes a turn, and after some turns without a change the program looks less often.
TEST_F(Window, DashboardFollowsItsSizeAfterALongTime) {
  DesktopRun run(stage_, camera_less_start());
  ExpectedDashboard scene = camera_less_scene("combo");
  ASSERT_EQ(run.wait_for(scene), "");
  for (const cv::Size size : {cv::Size(1441, 1080), cv::Size(1500, 1082)}) {
    SCOPED_TRACE(size);
    for (int turn = 0; turn < 12; ++turn) {
      run.desktop().press("m");
      log_message(scene, turn % 2 == 0 ? "Mic HUD disabled" : "Mic HUD enabled");
      ASSERT_TRUE(run.wait_for_messages(
          [&](const std::vector<std::string>& messages) { return messages == scene.messages; }));
    }
    run.desktop().resize(size);
    scene.options.width = size.width;
    scene.options.height = size.height;
    EXPECT_EQ(run.wait_for(scene), "");
  }
}

class SmallWindow : public Window, public ::testing::WithParamInterface<cv::Size> {};

// Whether every pixel of `half`, half as wide and half as high, is one of the four of `whole` that
// it stands for.
bool is_shrunk_by_half(const cv::Mat& half, const cv::Mat& whole) {
  if (half.size() != whole.size() / 2) return false;
  cv::Mat padded;
  cv::copyMakeBorder(whole, padded, 0, 1, 0, 1, cv::BORDER_REPLICATE);
  cv::Mat strange(half.size(), CV_8UC1, cv::Scalar(255));
  for (int offset = 0; offset < 4; ++offset) {
    cv::Mat quarter;
    const cv::Rect shifted({offset % 2, offset / 2}, whole.size());
    cv::resize(padded(shifted), quarter, half.size(), 0, 0, cv::INTER_NEAREST);
    strange &= differing_pixels(half, quarter);
  }
  return cv::countNonZero(strange) == 0;
}

// When one side falls below 800 x 480, the dashboard keeps its start-up size and the window shows
// it shrunk. The window system itself shrinks the last picture, so one that was drawn afterwards is
// awaited: the first that shows the event of a key.
TEST_P(SmallWindow, ShowsTheStartUpSize) {
  const cv::Size size = GetParam();
  DesktopRun run(stage_, {{"--no-camera", "--font-scale", "0.86", "--width",
                           std::to_string(size.width), "--height", std::to_string(size.height)}});
  ExpectedDashboard scene = scene_of_size(size);
  ASSERT_EQ(run.wait_for(scene), "");
  const cv::Mat before = run.desktop().screenshot();
  run.desktop().resize(size / 2);
  cv::Mat half;
  const auto see = [&] { half = run.desktop().screenshot(); };
  ASSERT_TRUE(wait_until([&] { return see(), is_shrunk_by_half(half, before); }));
  run.desktop().press("b");
  ASSERT_TRUE(wait_until([&] { return see(), !half.empty() && !is_shrunk_by_half(half, before); }));

  run.desktop().resize(size);
  log_message(scene, "Debug boxes/detail enabled");
  ASSERT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(is_shrunk_by_half(half, run.desktop().screenshot()));
}

INSTANTIATE_TEST_SUITE_P(Shapes, SmallWindow,
                         ::testing::Values(cv::Size(1440, 1080), cv::Size(1600, 900),
                                           cv::Size(1000, 600)));

TEST_F(Window, TinyWindowDoesNotEndTheRun) {
  DesktopRun run(stage_, camera_less_start());
  ASSERT_EQ(run.wait_for(camera_less_scene("combo")), "");
  const cv::Size tiny(40, 30);
  run.desktop().resize(tiny);
  EXPECT_TRUE(wait_until([&] { return run.desktop().screenshot().size() == tiny; }));
  run.desktop().resize({900, 500});
  EXPECT_EQ(run.wait_for(scene_of_size({900, 500})), "");
}

// The program does not watch for it: the next picture brings the window back.
TEST_F(Window, ClosedComesBackAndTheRunGoesOn) {
  DesktopRun run(stage_, camera_less_start());
  ASSERT_EQ(run.wait_for(camera_less_scene("combo")), "");
  run.desktop().ask_to_close();
  EXPECT_TRUE(wait_until([&] { return run.desktop().times_hidden() >= 1; }));
  ASSERT_TRUE(run.desktop().find_window());
  EXPECT_EQ(run.wait_for(camera_less_scene("combo")), "");
  run.desktop().press("b");
  EXPECT_TRUE(run.wait_for_message("Debug boxes/detail enabled"));
  EXPECT_TRUE(run.quit());
}

TEST_F(Window, FrameLimitEndsARunThatIsClosed) {
  DesktopRun run(stage_, camera_less_start({"--frames", "60"}));
  run.desktop().ask_to_close();
  const std::optional<ProcessEnd> end = run.program().wait_for_end();
  ASSERT_TRUE(end);
  EXPECT_EQ(end->exit_status, 0);
  EXPECT_EQ(summary_values(run.program().output()).at("frames"), "60");
}

class ManagedWindow : public Window {
 protected:
  XServer server_;
  WindowManager manager_{server_, stage_};
};

TEST_F(ManagedWindow, HasItsDashboard) {
  DesktopRun run(stage_, server_, camera_less_start());
  EXPECT_EQ(run.wait_for(camera_less_scene("combo")), "");
  run.desktop().press("m");
  EXPECT_TRUE(run.wait_for_message("Mic HUD disabled"));
  EXPECT_TRUE(run.quit());
}

TEST_F(ManagedWindow, FullscreenCoversTheScreen) {
  const ProgramStart start{{"--no-camera", "--fullscreen", "--font-scale", "0.86"}};
  DesktopRun run(stage_, server_, start);
  EXPECT_EQ(run.wait_for(scene_of_size({1920, 1200})), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(summary_values(run.program().output()).at("window"), "fullscreen");
}

TEST_F(ManagedWindow, WithAllLimitsOffRunsUntilQuit) {
  DesktopRun run(stage_, server_, camera_less_start({"--smoke", "--frames", "0"}));
  ASSERT_EQ(run.wait_for(camera_less_scene("combo")), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(summary_values(run.program().output()).at("frames"), "0");
}

}  // namespace
}  // namespace halcyra
