#include "tests/e2e/sensor_run.hpp"

#include <opencv2/imgproc.hpp>

#include "tests/e2e/exit_summary_line.hpp"

namespace halcyra {
namespace {

cv::Mat halves(const cv::Mat& left, const cv::Mat& right) {
  cv::Mat picture;
  cv::hconcat(left, right, picture);
  return picture;
}

cv::Mat half(int type, double value) { return cv::Mat(12, 8, type, cv::Scalar::all(value)); }

}  // namespace

cv::Mat infrared_halves() { return halves(half(CV_16UC1, 100), half(CV_16UC1, 900)); }

cv::Mat depth_halves() { return halves(half(CV_16UC1, 500), half(CV_16UC1, 4500)); }

cv::Mat infrared_halves_preview() { return halves(half(CV_8UC3, 0), half(CV_8UC3, 255)); }

cv::Mat depth_halves_preview() {
  cv::Mat preview;
  cv::applyColorMap(halves(half(CV_8UC1, 255), half(CV_8UC1, 0)), preview, cv::COLORMAP_JET);
  return preview;
}

cv::Mat empty_room_picture() {
  cv::Mat picture(120, 160, CV_8UC3);
  for (int y = 0; y < picture.rows; ++y) {
    for (int x = 0; x < picture.cols; ++x) {
      picture.at<cv::Vec3b>(y, x) =
          cv::Vec3b(static_cast<uchar>(200), static_cast<uchar>(x), static_cast<uchar>(y));
    }
  }
  return picture;
}

void SensorRun::add_good_sets(int count) {
  for (int set = 0; set < count; ++set) {
    recording_.add_color(empty_room_picture());
    recording_.add_infrared(infrared_halves());
    recording_.add_depth(depth_halves());
  }
}

ProgramStart SensorRun::start(const std::vector<std::string>& arguments) const {
  return {in_readable_window(arguments), "", {{"VIRTUAL_KINECT", recording_.folder().string()}}};
}

std::map<std::string, std::string> SensorRun::summary_of_run(
    const std::vector<std::string>& arguments) {
  Program program(stage_, start(arguments));
  const std::optional<ProcessEnd> end = program.wait_for_end();
  errors_ = program.errors();
  EXPECT_TRUE(end && end->exit_status == 0) << errors_;
  return summary_values(program.output());
}

std::vector<std::string> SensorRun::streams_started() {
  return {"RGB/IR/Depth streams started", "Kinect connected: 000000000000"};
}

ExpectedDashboard SensorRun::waiting_scene(const std::string& view) {
  ExpectedDashboard scene = empty_room_scene(view, streams_started());
  scene.status.kinect_connected = true;
  scene.status.rgb_ok = true;
  scene.status.kinect_message = "Kinect RGB/IR/Depth streams running";
  scene.status.ir_message = "waiting for IR frames";
  scene.status.depth_message = "waiting for depth frames";
  return scene;
}

ExpectedDashboard SensorRun::stalled_scene(const std::string& view) {
  ExpectedDashboard scene = waiting_scene(view);
  scene.status.kinect_message = "timeout waiting for Kinect frame";
  scene.status.ir_message = "timeout waiting for IR frame";
  scene.status.depth_message = "timeout waiting for depth frame";
  return scene;
}

ExpectedDashboard SensorRun::running_scene(const std::string& view) {
  ExpectedDashboard scene = waiting_scene(view);
  scene.status.ir_ok = true;
  scene.status.depth_ok = true;
  scene.status.ir_message = "IR stream running";
  scene.status.depth_message = "Depth stream running";
  scene.color = empty_room_picture();
  scene.infrared = infrared_halves_preview();
  scene.depth = depth_halves_preview();
  return scene;
}

const std::vector<const char*>& SensorRunOnBothDrivers::drivers() {
  static const std::vector<const char*> kDrivers = {HALCYRA_PROGRAM,
                                                    HALCYRA_PROGRAM_IGNORING_TIMEOUT};
  return kDrivers;
}

std::string SensorRunOnBothDrivers::driver_name(const ::testing::TestParamInfo<const char*>& info) {
  return info.index == 0 ? "TimeoutWorks" : "TimeoutIgnored";
}

ProgramStart SensorRunOnBothDrivers::start_of_driver(
    const std::vector<std::string>& arguments) const {
  ProgramStart result = start(arguments);
  result.executable = GetParam();
  return result;
}

}  // namespace halcyra
