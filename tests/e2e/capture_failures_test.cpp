// A sensor that is missing, cannot be opened, stalls or delivers damaged frames: what the program
// says, and that the run goes on.
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/sensor_run.hpp"
#include "tests/e2e/waiting.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

using Summary = std::map<std::string, std::string>;

int lines_with(const std::string& text, const std::string& part) {
  std::istringstream lines(text);
  int count = 0;
  for (std::string line; std::getline(lines, line);) {
    count += line.find(part) != std::string::npos ? 1 : 0;
  }
  return count;
}

class MissingSensor : public SensorRun {
 protected:
  // A run of two turns; it must find no sensor.
  void expect_no_sensor(const std::string& virtual_kinect) {
    ProgramStart without_window = start({"--frames", "2"});
    without_window.environment["VIRTUAL_KINECT"] = virtual_kinect;
    Program program(stage_, without_window);
    const std::optional<ProcessEnd> end = program.wait_for_end();
    ASSERT_TRUE(end && end->exit_status == 0) << program.errors();
    errors_ = program.errors();
    Summary summary = summary_values(program.output());
    EXPECT_EQ(summary["frames"], "2");
    EXPECT_EQ(summary["kinect"], "unavailable");
    EXPECT_EQ(summary["rgb"], "unavailable");
  }
};

TEST_F(MissingSensor, IsSaidOnTheDashboard) {
  DesktopRun run(stage_, {in_readable_window({})});
  ExpectedDashboard scene = empty_room_scene("combo", {"No Kinect v2 device detected"});
  scene.status.kinect_message = "no Kinect v2 device detected";
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(summary_values(run.program().output()).at("frames"), "0");
}

TEST_F(MissingSensor, EmptyVariableIsNoSensorAndNoComplaint) {
  expect_no_sensor("");
  EXPECT_EQ(lines_with(errors_, "VIRTUAL_KINECT"), 0);
}

TEST_F(MissingSensor, UnusableValueIsNamedOnce) {
  const std::string file = (stage_.folder() / "a-file").string();
  write_text(file, "no recording");
  for (const std::string& value : {std::string("/no/such/recording"), file, std::string("Room")}) {
    SCOPED_TRACE(value);
    expect_no_sensor(value);
    EXPECT_EQ(lines_with(errors_, value), 1) << errors_;
  }
}

TEST_F(MissingSensor, UnusableDeviceFileIsSaidOnce) {
  add_good_sets(1);
  const std::vector<std::pair<std::string, std::string>> settings = {
      {"colour: RGBX\n", "colour"},
      {"pace: 121\n", "pace"},
      {"pace: -1\n", "pace"},
      {"serial: 123456789\n", "serial"},
      {"firmware: 1\n", "firmware"},
      {"after: never\n", "after"},
      {"open: maybe\n", "open"},
      {"start: 1\n", "start"},
      {"color_format: YUV\n", "color_format"},
      {"pace: [1\n", "device.yml"}};
  for (const auto& [text, named] : settings) {
    SCOPED_TRACE(text);
    recording_.set_device(text);
    expect_no_sensor(recording_.folder().string());
    EXPECT_EQ(lines_with(errors_, named), 1) << errors_;
  }
}

TEST_F(MissingSensor, NothingIsSaidWhenNoneIsWanted) {
  ProgramStart without_window = start({"--no-camera", "--frames", "1"});
  without_window.environment["VIRTUAL_KINECT"] = "/no/such/recording";
  Program program(stage_, without_window);
  ASSERT_TRUE(program.wait_for_end());
  EXPECT_EQ(lines_with(program.errors(), "/no/such/recording"), 0);
}

class RefusingSensor : public SensorRun {};

TEST_F(RefusingSensor, OpenFails) {
  recording_.set_device("open: fail\n");
  add_good_sets(1);
  DesktopRun run(stage_, start({"--frames", "100000"}));
  ExpectedDashboard scene = empty_room_scene("combo", {"Kinect open failed"});
  scene.status.kinect_connected = true;
  scene.status.kinect_message = "failed to open Kinect device";
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
  Summary summary = summary_values(run.program().output());
  EXPECT_EQ(summary["kinect"], "connected");
  EXPECT_EQ(summary["rgb"], "unavailable");
  EXPECT_GE(std::stoi(summary["frames"]), 1);
}

TEST_F(RefusingSensor, StartFails) {
  recording_.set_device("start: fail\n");
  add_good_sets(1);
  DesktopRun run(stage_, start({"--frames", "100000", "--view", "ir"}));
  ExpectedDashboard scene = empty_room_scene("ir", {"RGB/IR/Depth stream start failed"});
  scene.status.kinect_connected = true;
  scene.status.kinect_message = "failed to start RGB/IR/Depth streams";
  scene.status.ir_message = "Kinect stream start failed";
  scene.status.depth_message = "Kinect stream start failed";
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
  Summary summary = summary_values(run.program().output());
  EXPECT_EQ(summary["kinect"], "connected");
  EXPECT_EQ(summary["rgb"], "unavailable");
  EXPECT_EQ(summary["ir"], "unavailable");
  EXPECT_EQ(summary["depth"], "unavailable");
  EXPECT_GE(std::stoi(summary["frames"]), 1);
}

class StallingSensor : public SensorRunOnBothDrivers {
 protected:
  static void expect_live_window(DesktopRun& run) {
    run.desktop().press("b");
    EXPECT_TRUE(run.wait_for_message("Debug boxes/detail enabled"));
    EXPECT_TRUE(run.quit());
  }
};

INSTANTIATE_TEST_SUITE_P(Drivers, StallingSensor,
                         ::testing::ValuesIn(SensorRunOnBothDrivers::drivers()),
                         SensorRunOnBothDrivers::driver_name);

TEST_P(StallingSensor, FromTheStart) {
  recording_.add_color(empty_room_picture());
  recording_.add_infrared(infrared_halves());
  DesktopRun run(stage_, start_of_driver({"--view", "depth", "--frames", "5"}));
  EXPECT_EQ(run.wait_for(stalled_scene("depth")), "");
  expect_live_window(run);
  Summary summary = summary_values(run.program().output());
  EXPECT_EQ(summary["frames"], "0");
  EXPECT_EQ(summary["rgb"], "OK");
  EXPECT_EQ(summary["ir"], "unavailable");
  EXPECT_EQ(summary["depth"], "unavailable");
}

TEST_P(StallingSensor, AfterSomeSetsKeepsThePictures) {
  recording_.set_device("pace: 0\nafter: stall\n");
  add_good_sets(3);
  DesktopRun run(stage_, start_of_driver({}));
  ExpectedDashboard scene = running_scene("combo");
  scene.status.kinect_message = "timeout waiting for Kinect frame";
  EXPECT_EQ(run.wait_for(scene), "");
  expect_live_window(run);
  Summary summary = summary_values(run.program().output());
  EXPECT_EQ(summary["frames"], "3");
  EXPECT_EQ(summary["ir"], "OK");
  EXPECT_EQ(summary["depth"], "OK");
}

// While the frame count stays at 1, every turn asks the services.
TEST_P(StallingSensor, AfterTheFirstSetAsksTheServicesEveryTurn) {
  recording_.set_device("pace: 0\nafter: stall\n");
  add_good_sets(1);
  DesktopRun run(stage_, start_of_driver({}));
  // The start, the first frame and two turns without a frame.
  EXPECT_TRUE(wait_until([this] { return stage_.calls().size() >= 1 + 4 * 4; }));
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(summary_values(run.program().output()).at("frames"), "1");
}

class UnusableFrames : public SensorRun {
 protected:
  // One set with the given picture in one stream, or an undecodable file for an empty one.
  void add_set_with(const std::string& stream, const cv::Mat& picture) {
    std::filesystem::remove_all(recording_.folder());
    recording_ = Recording(stage_.folder() / "recording");
    recording_.set_device("pace: 0\n");
    const std::map<std::string, cv::Mat> good = {
        {"color", empty_room_picture()}, {"ir", infrared_halves()}, {"depth", depth_halves()}};
    for (const auto& [name, good_picture] : good) {
      const cv::Mat& chosen = name == stream ? picture : good_picture;
      if (chosen.empty()) {
        recording_.add_empty_file(name);
      } else {
        recording_.add(name, chosen);
      }
    }
  }
};

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

cv::Mat float_row(const std::vector<float>& values) { return cv::Mat(values, true).reshape(1, 1); }

TEST_F(UnusableFrames, InfraredWithoutContrast) {
  const std::vector<std::pair<std::string, cv::Mat>> pictures = {
      {"undecodable", cv::Mat()},
      {"zero", cv::Mat(4, 4, CV_16UC1, cv::Scalar(0))},
      {"equal", cv::Mat(4, 4, CV_16UC1, cv::Scalar(700))},
      {"one level beside zeros", float_row({0, 0, 700, 700})},
      {"negative", float_row({-5, -6, -7, 0})},
      {"not finite", float_row({kNaN, kInfinity, -kInfinity, kNaN})},
      {"one finite level", float_row({kNaN, 20, kInfinity, 20})}};
  for (const auto& [name, picture] : pictures) {
    SCOPED_TRACE(name);
    add_set_with("ir", picture);
    const Summary summary = summary_of_run({"--frames", "2"});
    EXPECT_EQ(summary.at("ir"), "unavailable");
    EXPECT_EQ(summary.at("depth"), "OK");
    EXPECT_EQ(summary.at("frames"), "2");
  }
}

TEST_F(UnusableFrames, InfraredIsSaidOnTheDashboard) {
  add_set_with("ir", cv::Mat(4, 4, CV_16UC1, cv::Scalar(700)));
  DesktopRun run(stage_, start({"--view", "ir"}));
  ExpectedDashboard scene = running_scene("ir");
  scene.status.ir_ok = false;
  scene.status.ir_message = "IR frame unavailable or not convertible";
  scene.infrared = cv::Mat();
  EXPECT_EQ(run.wait_for(scene), "");
}

TEST_F(UnusableFrames, DepthOutOfRange) {
  const std::vector<std::pair<std::string, cv::Mat>> pictures = {
      {"undecodable", cv::Mat()},
      {"zero", cv::Mat(4, 4, CV_16UC1, cv::Scalar(0))},
      {"too near", cv::Mat(4, 4, CV_16UC1, cv::Scalar(249))},
      {"too far", float_row({8000.5F, 9000, 60000, 8001})},
      {"negative", float_row({-500, -1000, -4500, -1})},
      {"not finite", float_row({kNaN, kInfinity, -kInfinity, kNaN})}};
  for (const auto& [name, picture] : pictures) {
    SCOPED_TRACE(name);
    add_set_with("depth", picture);
    const Summary summary = summary_of_run({"--frames", "2"});
    EXPECT_EQ(summary.at("depth"), "unavailable");
    EXPECT_EQ(summary.at("ir"), "OK");
    EXPECT_EQ(summary.at("frames"), "2");
  }
}

TEST_F(UnusableFrames, DepthAtTheLimitsIsUsable) {
  for (const float millimetres : {250.0F, 8000.0F}) {
    SCOPED_TRACE(millimetres);
    add_set_with("depth", float_row({0, millimetres, 0, 0}));
    EXPECT_EQ(summary_of_run({"--frames", "1"}).at("depth"), "OK");
  }
}

TEST_F(UnusableFrames, DepthIsSaidOnTheDashboard) {
  add_set_with("depth", cv::Mat(4, 4, CV_16UC1, cv::Scalar(0)));
  DesktopRun run(stage_, start({"--view", "depth"}));
  ExpectedDashboard scene = running_scene("depth");
  scene.status.depth_ok = false;
  scene.status.depth_message = "Depth frame unavailable or not convertible";
  scene.depth = cv::Mat();
  EXPECT_EQ(run.wait_for(scene), "");
}

// An unusable colour frame is passed over in silence. The other streams are shown, and since no
// frame is counted, a frame limit is never reached.
TEST_F(UnusableFrames, ColourIsNotCounted) {
  const std::vector<std::pair<std::string, cv::Mat>> pictures = {
      {"undecodable", cv::Mat()}, {"one channel", cv::Mat(120, 160, CV_8UC1, cv::Scalar(90))}};
  for (const auto& [name, picture] : pictures) {
    SCOPED_TRACE(name);
    add_set_with("color", picture);
    DesktopRun run(stage_, start({"--frames", "1"}));
    ExpectedDashboard scene = running_scene("combo");
    scene.color = cv::Mat();
    EXPECT_EQ(run.wait_for(scene), "");
    EXPECT_TRUE(run.quit());
    Summary summary = summary_values(run.program().output());
    EXPECT_EQ(summary["frames"], "0");
    EXPECT_EQ(summary["rgb"], "OK");
  }
}

// A stream that has delivered once keeps its status.
TEST_F(UnusableFrames, LaterBadFramesLeaveTheLastPictures) {
  recording_.set_device("pace: 0\nafter: stall\n");
  add_good_sets(1);
  recording_.add_empty_file("color");
  recording_.add_infrared(cv::Mat(4, 4, CV_16UC1, cv::Scalar(0)));
  recording_.add_depth(cv::Mat(4, 4, CV_16UC1, cv::Scalar(0)));
  DesktopRun run(stage_, start({}));
  ExpectedDashboard scene = running_scene("combo");
  scene.status.kinect_message = "timeout waiting for Kinect frame";
  EXPECT_EQ(run.wait_for(scene), "");
}

}  // namespace
}  // namespace halcyra
