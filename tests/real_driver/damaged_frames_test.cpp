// A sensor whose frames arrive damaged.
#include <gtest/gtest.h>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/real_driver/usb_sensor_run.hpp"

namespace halcyra {
namespace {

class UsbDamage : public UsbSensorRun, public ::testing::WithParamInterface<const char*> {
 protected:
  void damage(const std::string& kinds, int every) {
    set_sensor("CORRUPT", kinds);
    set_sensor("CORRUPT_EVERY", std::to_string(every));
  }
};

std::string damage_name(const ::testing::TestParamInfo<const char*>& info) { return info.param; }

INSTANTIATE_TEST_SUITE_P(Kinds, UsbDamage,
                         ::testing::Values("jpeg", "header", "footer", "short", "noeoi", "big",
                                           "sub", "length", "iso", "noise", "dark", "transfer"),
                         damage_name);

TEST_P(UsbDamage, OfEverySecondFrameLeavesTheOthers) {
  damage(GetParam(), 2);
  Summary summary = summary_of_usb_run({"--frames", "3"});
  EXPECT_EQ(summary["frames"], "3");
  for (const char* name : {"rgb", "ir", "depth"}) EXPECT_EQ(summary[name], "OK") << name;
  EXPECT_GE(counts_of(log())["corrupted"], 1);
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

// Damage for which the driver drops the frame.
class UsbDamageThatDrops : public UsbDamage {};

INSTANTIATE_TEST_SUITE_P(Kinds, UsbDamageThatDrops,
                         ::testing::Values("jpeg", "header", "footer", "short", "noeoi", "big",
                                           "sub", "length", "iso", "transfer"),
                         damage_name);

TEST_P(UsbDamageThatDrops, OfEveryFrameIsAStall) {
  damage(GetParam(), 1);
  DesktopRun run(stage_, start_on_usb({}));
  EXPECT_EQ(run.wait_for(stalled_scene("combo")), "");
  expect_live_keys(run);
  EXPECT_EQ(summary_values(run.program().output()).at("frames"), "0");
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

using UsbDarkness = UsbDamage;

TEST_F(UsbDarkness, LeavesTheColour) {
  record_sets(1);
  damage("dark", 1);
  DesktopRun run(stage_, start_on_usb({}));
  ExpectedDashboard scene = recorded_scene("combo");
  scene.infrared = cv::Mat();
  scene.depth = cv::Mat();
  scene.status.ir_ok = false;
  scene.status.depth_ok = false;
  scene.status.ir_message = "IR frame unavailable or not convertible";
  scene.status.depth_message = "Depth frame unavailable or not convertible";
  EXPECT_EQ(wait_for_streams(run, scene), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

using UsbNoise = UsbDamage;

TEST_F(UsbNoise, IsShownAsItIs) {
  damage("noise", 1);
  Summary summary = summary_of_usb_run({"--frames", "2"});
  EXPECT_EQ(summary["frames"], "2");
  EXPECT_EQ(summary["ir"], "OK");
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

TEST_F(UsbNoise, AmongAllOtherDamageDoesNotEndTheRun) {
  damage("jpeg,header,footer,short,noeoi,big,sub,length,iso,noise,dark,transfer", 2);
  EXPECT_EQ(summary_of_usb_run({"--frames", "10"})["frames"], "10");
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

}  // namespace
}  // namespace halcyra
