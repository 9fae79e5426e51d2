// Runs of the program on a recording of the virtual Kinect, in an empty room.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/recording.hpp"
#include "tests/e2e/scenes.hpp"

namespace halcyra {

// Two intensities side by side; equalising makes the darker half black and the brighter one white.
cv::Mat infrared_halves();

// The nearest and the farthest depth of the colour scale side by side, in millimetres.
cv::Mat depth_halves();

// A picture without a face, with three different channels.
cv::Mat empty_room_picture();

// The previews made of infrared_halves() and depth_halves().
cv::Mat infrared_halves_preview();
cv::Mat depth_halves_preview();

class SensorRun : public ::testing::Test {
 protected:
  SensorRun() : recording_(stage_.folder() / "recording") { recording_.set_device("pace: 0\n"); }

  void add_good_sets(int count);

  // Starts on the recording, in the readable window.
  ProgramStart start(const std::vector<std::string>& arguments) const;

  // Runs the same without a window to its end. Returns the values of the exit summary.
  std::map<std::string, std::string> summary_of_run(const std::vector<std::string>& arguments);

  // What is logged when the streams start, newest first.
  static std::vector<std::string> streams_started();

  // An empty room whose sensor runs and has not delivered yet.
  static ExpectedDashboard waiting_scene(const std::string& view);

  // An empty room whose sensor runs and never delivers.
  static ExpectedDashboard stalled_scene(const std::string& view);

  // An empty room whose three streams have all delivered the good set.
  static ExpectedDashboard running_scene(const std::string& view);

  Stage stage_;
  Recording recording_;
  std::string errors_;  // of the last run without a window
};

// Runs each test with a driver whose timeout works and with one that ignores it.
class SensorRunOnBothDrivers : public SensorRun, public ::testing::WithParamInterface<const char*> {
 public:
  static const std::vector<const char*>& drivers();
  static std::string driver_name(const ::testing::TestParamInfo<const char*>& info);

 protected:
  ProgramStart start_of_driver(const std::vector<std::string>& arguments) const;
};

}  // namespace halcyra
