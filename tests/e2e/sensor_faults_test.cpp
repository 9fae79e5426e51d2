// A sensor on a bad cable: it stalls and comes back, is unplugged, loses and damages frames,
// changes their size, and fails to stop or close.
#include <utility>

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/sensor_run.hpp"

namespace halcyra {
namespace {

using Summary = std::map<std::string, std::string>;

constexpr char kTimeout[] = "timeout waiting for Kinect frame";

cv::Mat bright_room_picture() { return 255 - empty_room_picture(); }

class FaultySensor : public SensorRunOnBothDrivers {
 protected:
  // Of a run without a window that must end with status 0.
  Summary summary_of_driver(const std::vector<std::string>& arguments) {
    Program program(stage_, start_of_driver(arguments));
    const std::optional<ProcessEnd> end = program.wait_for_end();
    EXPECT_TRUE(end && end->exit_status == 0) << program.errors();
    return summary_values(program.output());
  }

  void expect_complete_run(const std::vector<std::string>& arguments, const std::string& frames) {
    Summary summary = summary_of_driver(arguments);
    EXPECT_EQ(summary["frames"], frames);
    for (const char* name : {"rgb", "ir", "depth"}) EXPECT_EQ(summary[name], "OK") << name;
    EXPECT_EQ(summary["kinect"], "connected");
  }
};

INSTANTIATE_TEST_SUITE_P(Drivers, FaultySensor,
                         ::testing::ValuesIn(SensorRunOnBothDrivers::drivers()),
                         SensorRunOnBothDrivers::driver_name);

// The sentence about the stall stays, but the pictures are renewed.
TEST_P(FaultySensor, StallsAndResumes) {
  recording_.set_device("pace: 1\nafter: pause\n");
  for (const cv::Mat& color : {bright_room_picture(), empty_room_picture()}) {
    recording_.add_color(color);
    recording_.add_infrared(infrared_halves());
    recording_.add_depth(depth_halves());
  }
  DesktopRun run(stage_, start_of_driver({}));
  ExpectedDashboard scene = running_scene("combo");
  scene.status.kinect_message = kTimeout;
  EXPECT_EQ(run.wait_for(scene), "");
  scene.color = bright_room_picture();
  EXPECT_EQ(run.wait_for(scene), "");
  scene.color = empty_room_picture();
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
  EXPECT_GE(std::stoi(summary_values(run.program().output()).at("frames")), 4);
}

TEST_P(FaultySensor, IsPulledOut) {
  recording_.set_device("pace: 0\nafter: unplug\n");
  add_good_sets(3);
  DesktopRun run(stage_, start_of_driver({}));
  ExpectedDashboard scene = running_scene("combo");
  scene.status.kinect_message = kTimeout;
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
  Summary summary = summary_values(run.program().output());
  EXPECT_EQ(summary["frames"], "3");
  EXPECT_EQ(summary["kinect"], "connected");
}

TEST_P(FaultySensor, DoesNotStopOrClose) {
  recording_.set_device("pace: 0\nstop: fail\nclose: fail\n");
  add_good_sets(1);
  expect_complete_run({"--smoke", "--frames", "3"}, "3");
}

TEST_P(FaultySensor, DeliversWhileItShutsDown) {
  for (const std::string pace : {"0", "120"}) {
    recording_.set_device("pace: " + pace + "\nstop: late\n");
    add_good_sets(1);
    expect_complete_run({"--smoke", "--frames", "3"}, "3");
  }
}

TEST_P(FaultySensor, LosesFrames) {
  for (const std::string pace : {"0", "120"}) {
    SCOPED_TRACE(pace);
    recording_.set_device("pace: " + pace + "\ndrop: 30\n");
    add_good_sets(2);
    expect_complete_run({"--smoke", "--frames", "20"}, "20");
  }
}

TEST_P(FaultySensor, LosesEveryFrame) {
  recording_.set_device("drop: 100\n");
  add_good_sets(1);
  DesktopRun run(stage_, start_of_driver({}));
  EXPECT_EQ(run.wait_for(stalled_scene("combo")), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(summary_values(run.program().output()).at("frames"), "0");
}

TEST_P(FaultySensor, DamagesFrames) {
  recording_.set_device("pace: 0\ncorrupt: 40\n");
  add_good_sets(2);
  expect_complete_run({"--smoke", "--frames", "40"}, "40");
}

TEST_P(FaultySensor, CountersRunOver) {
  recording_.set_device("pace: 0\ncounters: wrap\n");
  add_good_sets(1);
  expect_complete_run({"--smoke", "--frames", "40"}, "40");
}

TEST_P(FaultySensor, HasEveryFaultAtOnce) {
  recording_.set_device(
      "pace: 120\nafter: pause\nstop: late\nclose: fail\ndrop: 20\ncorrupt: 20\ncounters: wrap\n");
  add_good_sets(30);
  expect_complete_run({"--smoke", "--frames", "25"}, "25");
}

class DamagedFrames : public SensorRun {
 protected:
  // Damage takes turns: no data, no width, no height, two bytes per pixel, arbitrary pixels.
  void damage_sets(int count) {
    recording_.set_device("pace: 0\nafter: stall\ncorrupt: 100\n");
    add_good_sets(count);
  }
};

TEST_F(DamagedFrames, CannotBeUsed) {
  damage_sets(4);
  DesktopRun run(stage_, start({}));
  EXPECT_EQ(run.wait_for(stalled_scene("combo")), "");
  EXPECT_TRUE(run.quit());
  Summary summary = summary_values(run.program().output());
  EXPECT_EQ(summary["frames"], "0");
  EXPECT_EQ(summary["ir"], "unavailable");
  EXPECT_EQ(summary["depth"], "unavailable");
}

TEST_F(DamagedFrames, AreShownWhereTheyHavePixels) {
  damage_sets(5);
  Summary summary = summary_of_run({"--frames", "1"});
  EXPECT_EQ(summary["frames"], "1");
  EXPECT_EQ(summary["ir"], "OK");
  EXPECT_EQ(summary["depth"], "OK");
}

// A frame of each stream is missing throughout, so that no set gets complete.
class MissingStream : public SensorRun, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(Streams, MissingStream, ::testing::Values("color", "ir", "depth"),
                         [](const auto& stream) { return std::string(stream.param); });

TEST_P(MissingStream, IsAStall) {
  add_good_sets(2);
  std::filesystem::remove_all(recording_.folder() / GetParam());
  DesktopRun run(stage_, start({"--view", "ir"}));
  EXPECT_EQ(run.wait_for(stalled_scene("ir")), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(summary_values(run.program().output()).at("frames"), "0");
}

cv::Mat of_size(const cv::Mat& picture, cv::Size size) {
  cv::Mat resized;
  cv::resize(picture, resized, size, 0, 0, cv::INTER_NEAREST);
  return resized;
}

// The size of the last set, after others of other sizes.
class ChangingFrameSize : public SensorRun, public ::testing::WithParamInterface<cv::Size> {};

INSTANTIATE_TEST_SUITE_P(Sizes, ChangingFrameSize,
                         ::testing::Values(cv::Size(320, 240), cv::Size(3840, 2160),
                                           cv::Size(16, 2), cv::Size(640, 480)));

TEST_P(ChangingFrameSize, IsFollowed) {
  recording_.set_device("pace: 0\nafter: stall\n");
  const auto add_set = [this](const cv::Mat& color, cv::Size size) {
    recording_.add_color(of_size(color, size));
    recording_.add_infrared(of_size(infrared_halves(), {size.width * 2, size.height}));
    recording_.add_depth(of_size(depth_halves(), {size.width * 2, size.height}));
  };
  // On a busy machine the sensor times out amid the recording. The awaited picture comes last, and
  // only once, so that this is not taken for the end.
  const cv::Mat blank(2, 2, CV_8UC3, cv::Scalar::all(40));
  for (const cv::Size size :
       {cv::Size(640, 480), cv::Size(3840, 2160), cv::Size(2, 7), cv::Size(320, 240)}) {
    add_set(blank, size);
  }
  add_set(empty_room_picture(), GetParam());
  DesktopRun run(stage_, start({}));
  ExpectedDashboard scene = running_scene("combo");
  scene.status.kinect_message = kTimeout;
  scene.color = of_size(empty_room_picture(), GetParam());
  scene.infrared = of_size(infrared_halves_preview(), {GetParam().width * 2, GetParam().height});
  scene.depth = of_size(depth_halves_preview(), {GetParam().width * 2, GetParam().height});
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(summary_values(run.program().output()).at("frames"), "5");
}

}  // namespace
}  // namespace halcyra
