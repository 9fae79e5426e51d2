// The program on a sensor that delivers: what the window shows, what the summary says.
#include <fstream>

#include <gtest/gtest.h>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/real_driver/usb_sensor_run.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

class UsbStreaming : public UsbSensorRun {
 protected:
  // What a run of three frames must say and leave.
  void expect_complete_run() {
    Summary summary = summary_of_usb_run({"--frames", "3"});
    EXPECT_EQ(summary["frames"], "3");
    EXPECT_EQ(summary["kinect"], "connected");
    for (const char* name : {"rgb", "ir", "depth"}) EXPECT_EQ(summary[name], "OK") << name;
    EXPECT_EQ(leftovers_of(log()), nothing_left());
  }
};

class UsbView : public UsbStreaming, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(All, UsbView, ::testing::Values("rgb", "ir", "depth", "combo"),
                         [](const auto& view) { return std::string(view.param); });

TEST_P(UsbView, ShowsTheDriversPictures) {
  record_sets(1);
  DesktopRun run(stage_, start_on_usb({"--view", GetParam()}));
  EXPECT_EQ(wait_for_streams(run, recorded_scene(GetParam())), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

class UsbDriverBuild : public UsbStreaming, public ::testing::WithParamInterface<DriverBuild> {};

INSTANTIATE_TEST_SUITE_P(Drivers, UsbDriverBuild, ::testing::ValuesIn(driver_builds()),
                         [](const auto& build) { return std::string(build.param.name); });

TEST_P(UsbDriverBuild, DeliversAndEnds) {
  record_sets(1);
  DesktopRun run(stage_, start_on_usb({}, GetParam()));
  EXPECT_EQ(wait_for_streams(run, recorded_scene("combo")), "");
  const std::string maps = read_text("/proc/" + std::to_string(run.program().id()) + "/maps");
  const std::string driver_folder = GetParam().driver_folder;
  EXPECT_NE(maps.find(driver_folder + "/libfreenect2.so"), std::string::npos);
  expect_live_keys(run);
  EXPECT_GE(std::stoi(summary_values(run.program().output()).at("frames")), 1);
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

TEST_F(UsbStreaming, CountsItsFramesUpToTheLimit) { expect_complete_run(); }

TEST_F(UsbStreaming, WorksAtThirtyFramesASecond) {
  set_sensor("FPS", "30");
  expect_complete_run();
}

TEST_F(UsbStreaming, LogsTheSerialNumber) {
  set_sensor("SERIAL", "012345678912");
  DesktopRun run(stage_, start_on_usb({}));
  run.expect_messages({"Kinect connected: 012345678912"});
  EXPECT_TRUE(run.wait_for_message("Kinect connected: 012345678912"));
  EXPECT_TRUE(run.quit());
}

TEST_F(UsbStreaming, KeepsTheSerialNumberThatTheBusKnows) {
  set_sensor("PROTOCOL_SERIAL", "777777777777");
  DesktopRun run(stage_, start_on_usb({}));
  run.expect_messages({"Kinect connected: 000000000000", "Kinect connected: 777777777777"});
  EXPECT_TRUE(run.wait_for_message("Kinect connected: 000000000000"));
  EXPECT_TRUE(run.quit());
}

TEST_F(UsbStreaming, DriverKnowsSerialNumberAndFirmware) {
  set_sensor("SERIAL", "012345678912");
  set_sensor("FIRMWARE", "2.3.3912.0");
  EXPECT_EQ(record_sets(1), "serial 012345678912\nfirmware 2.3.3912.0\n");
}

TEST_F(UsbStreaming, NoDeviceIsSaidOnTheDashboard) {
  set_sensor("DEVICES", "0");
  DesktopRun run(stage_, start_on_usb({"--frames", "100000"}));
  ExpectedDashboard scene = empty_room_scene("combo", {"No Kinect v2 device detected"});
  scene.status.kinect_message = "no Kinect v2 device detected";
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(summary_values(run.program().output()).at("kinect"), "unavailable");
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

TEST_F(UsbStreaming, TakesTheFirstOfSeveralDevices) {
  set_sensor("DEVICES", "4");
  DesktopRun run(stage_, start_on_usb({}));
  run.expect_messages({"Kinect connected: 000000000000"});
  EXPECT_TRUE(run.wait_for_message("Kinect connected: 000000000000"));
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(lines_with(log(), "device=0 command stream"), 2);
  for (const char* other : {"device=1", "device=2", "device=3"}) {
    EXPECT_EQ(lines_with(log(), other + std::string(" command")), 0);
  }
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

}  // namespace
}  // namespace halcyra
