// A sensor that stops to deliver, or is pulled out.
#include <gtest/gtest.h>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/real_driver/usb_sensor_run.hpp"

namespace halcyra {
namespace {

class UsbStallFromTheStart : public UsbSensorRun,
                             public ::testing::WithParamInterface<DriverBuild> {};

INSTANTIATE_TEST_SUITE_P(Drivers, UsbStallFromTheStart, ::testing::ValuesIn(driver_builds()),
                         [](const auto& build) { return std::string(build.param.name); });

TEST_P(UsbStallFromTheStart, LeavesTheKeysAlive) {
  set_sensor("STALL_AFTER", "0");
  DesktopRun run(stage_, start_on_usb({"--view", "depth"}, GetParam()));
  EXPECT_EQ(run.wait_for(stalled_scene("depth")), "");
  expect_live_keys(run);
  Summary summary = summary_values(run.program().output());
  EXPECT_EQ(summary["frames"], "0");
  EXPECT_EQ(summary["rgb"], "OK");
  EXPECT_EQ(summary["ir"], "unavailable");
  EXPECT_EQ(summary["depth"], "unavailable");
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

class UsbStall : public UsbSensorRun, public ::testing::WithParamInterface<const char*> {
 protected:
  // The scene with the pictures of a sensor that does not stall, after a time without a set.
  ExpectedDashboard scene_after_timeout() {
    record_sets(1);
    ExpectedDashboard scene = recorded_scene("combo");
    scene.status.kinect_message = stalled_scene("combo").status.kinect_message;
    return scene;
  }
};

INSTANTIATE_TEST_SUITE_P(Streams, UsbStall, ::testing::Values("all", "color", "depth"),
                         [](const auto& stream) { return std::string(stream.param); });

// No set gets complete without one of its frames, so the streams that go on do not show.
TEST_P(UsbStall, KeepsTheLastPicturesAndTheKeysAlive) {
  const ExpectedDashboard scene = scene_after_timeout();
  set_sensor("STALL", GetParam());
  set_sensor("STALL_AFTER", "20");
  DesktopRun run(stage_, start_on_usb({}));
  EXPECT_TRUE(wait_for_log("stalls at frame 20"));
  EXPECT_EQ(run.wait_for(scene), "");
  expect_live_keys(run);
  Summary summary = summary_values(run.program().output());
  EXPECT_GE(std::stoi(summary["frames"]), 1);
  EXPECT_EQ(summary["depth"], "OK");
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

TEST_P(UsbStall, OfOneStreamFromTheStartIsSaidForInfraredAndDepth) {
  set_sensor("STALL", GetParam());
  set_sensor("STALL_AFTER", "0");
  DesktopRun run(stage_, start_on_usb({}));
  EXPECT_EQ(run.wait_for(stalled_scene("combo")), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(summary_values(run.program().output()).at("frames"), "0");
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

// One picture before the stall and another one behind it. The sentence about the stall stays, as a
// hint that it happened.
TEST_P(UsbStall, OfThreeSecondsEndsWithNewPictures) {
  const cv::Mat before = 255 - empty_room_picture();
  const ExpectedDashboard scene = scene_after_timeout();
  std::vector<cv::Mat> pictures(50, empty_room_picture());
  pictures.front() = before;
  show(pictures);
  set_sensor("COLOR_HOLD", "20");
  set_sensor("STALL", GetParam());
  set_sensor("STALL_AFTER", "10");
  set_sensor("STALL_MS", "3000");
  DesktopRun run(stage_, start_on_usb({}));
  EXPECT_EQ(run.wait_for(scene), "");
  expect_live_keys(run);
  EXPECT_EQ(lines_with(log(), "stalls at frame 10"), 1);
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

using UsbPlug = UsbStall;

TEST_F(UsbPlug, PulledOutKeepsTheLastPicturesAndTheKeysAlive) {
  const ExpectedDashboard scene = scene_after_timeout();
  set_sensor("UNPLUG_AFTER", "20");
  DesktopRun run(stage_, start_on_usb({}));
  EXPECT_TRUE(wait_for_log("unplugged"));
  EXPECT_EQ(run.wait_for(scene), "");
  expect_live_keys(run);
  EXPECT_EQ(summary_values(run.program().output()).at("kinect"), "connected");
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

TEST_F(UsbPlug, PulledOutAtOnceIsAStall) {
  set_sensor("UNPLUG_AFTER", "0");
  DesktopRun run(stage_, start_on_usb({}));
  EXPECT_EQ(run.wait_for(stalled_scene("combo")), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

}  // namespace
}  // namespace halcyra
