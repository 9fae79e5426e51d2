// What the window shows while the sensor delivers.
#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/sensor_run.hpp"

namespace halcyra {
namespace {

using RunningSensor = SensorRun;

class RunningSensorView : public SensorRun, public ::testing::WithParamInterface<const char*> {};

std::string view_name(const ::testing::TestParamInfo<const char*>& info) { return info.param; }

TEST_P(RunningSensorView, ShowsItsDashboard) {
  add_good_sets(1);
  DesktopRun run(stage_, start({"--view", GetParam()}));
  EXPECT_EQ(run.wait_for(running_scene(GetParam())), "");
  EXPECT_TRUE(run.quit());
  std::map<std::string, std::string> summary = summary_values(run.program().output());
  EXPECT_EQ(summary["kinect"], "connected");
  EXPECT_EQ(summary["rgb"], "OK");
  EXPECT_EQ(summary["ir"], "OK");
  EXPECT_EQ(summary["depth"], "OK");
  EXPECT_EQ(summary["current_view"], GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, RunningSensorView,
                         ::testing::Values("rgb", "ir", "depth", "skeletal", "combo",
                                           "room_overview", "follow"),
                         view_name);

TEST_F(RunningSensor, ColoursAreRightInTheOtherChannelOrder) {
  recording_.set_device("pace: 0\ncolor_format: RGBX\n");
  add_good_sets(1);
  DesktopRun run(stage_, start({"--view", "rgb"}));
  EXPECT_EQ(run.wait_for(running_scene("rgb")), "");
}

TEST_F(RunningSensor, FourthChannelOfAFileIsIgnored) {
  add_good_sets(1);
  std::filesystem::remove_all(recording_.folder() / "color");
  cv::Mat with_alpha;
  cv::cvtColor(empty_room_picture(), with_alpha, cv::COLOR_BGR2BGRA, 4);
  recording_.add_color(with_alpha);
  DesktopRun run(stage_, start({"--view", "rgb"}));
  EXPECT_EQ(run.wait_for(running_scene("rgb")), "");
}

TEST_F(RunningSensor, SerialNumberIsLogged) {
  recording_.set_device("pace: 0\nserial: \"012345678912\"\n");
  add_good_sets(1);
  DesktopRun run(stage_, start({}));
  run.expect_messages({"Kinect connected: 012345678912"});
  EXPECT_TRUE(run.wait_for_message("Kinect connected: 012345678912"));
}

TEST_F(RunningSensor, FramesAreCountedUpToTheLimit) {
  add_good_sets(1);
  const std::map<std::string, std::string> summary = summary_of_run({"--frames", "7"});
  EXPECT_EQ(summary.at("frames"), "7");
  EXPECT_GT(std::stod(summary.at("fps")), 0.0);
  EXPECT_EQ(summary.at("cc_last_quality"), "no_face");
}

TEST_F(RunningSensor, RealTimePaceRunsToTheLimit) {
  recording_.set_device("pace: 120\n");
  add_good_sets(3);
  EXPECT_EQ(summary_of_run({"--smoke", "--frames", "10"}).at("frames"), "10");
}

}  // namespace
}  // namespace halcyra
