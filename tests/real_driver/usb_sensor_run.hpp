// Runs of the program on the real driver, with the emulated sensor of tests/usb_kinect.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/e2e/sensor_run.hpp"
#include "tests/real_driver/sensor_log.hpp"

namespace halcyra {

// A program, and the folder with the build of the driver that it loads; "" for the build that it
// was linked with.
struct DriverBuild {
  const char* name;
  const char* program;
  const char* driver_folder;
};

// Built against the driver whose timed wait keeps its time.
extern const DriverBuild kTimedBuild;

// All ways in which a program can come to its driver.
std::vector<DriverBuild> driver_builds();

using Summary = std::map<std::string, std::string>;

// Skips its tests where the real driver was not built.
class UsbSensorRun : public SensorRun {
 protected:
  UsbSensorRun();
  void SetUp() override;

  // Sets one of the variables of tests/usb_kinect/README.md, without "USB_KINECT_".
  void set_sensor(const std::string& name, const std::string& value);

  // The sensor sees these pictures in turn, stretched to its size.
  void show(const std::vector<cv::Mat>& pictures);

  // Starts in the readable window.
  ProgramStart start_on_usb(const std::vector<std::string>& arguments,
                            const DriverBuild& build = kTimedBuild) const;

  // Runs without a window to its end, which must have status 0.
  Summary summary_of_usb_run(const std::vector<std::string>& arguments);

  // Runs one of the tools that use the driver alone to its end, which must have status 0. Returns
  // what it prints.
  std::string output_of_tool(const std::string& tool, const std::vector<std::string>& arguments);

  // Makes `recording_` of sets that the driver delivers from the sensor as it is set. Returns what
  // the tool says about the device.
  std::string record_sets(int count);

  // The running scene with the pictures of the first recorded set.
  ExpectedDashboard recorded_scene(const std::string& view) const;

  // A set of the recording; 32-bit floats, and 8-bit BGR.
  cv::Mat recorded(const std::string& stream) const;

  // Waits for exactly this dashboard, whether or not a busy machine ever let the program wait for a
  // second. Returns "" once it is shown, else the last difference.
  static std::string wait_for_streams(DesktopRun& run, ExpectedDashboard expected);

  // Presses a key that must show, and then q.
  static void expect_live_keys(DesktopRun& run);

  // Waits for a line with the text in log(). False: it did not come before the deadline.
  bool wait_for_log(const std::string& text) const;

  // The sensor's log of the last run.
  std::filesystem::path log() const { return stage_.folder() / "usb.log"; }

 private:
  std::map<std::string, std::string> environment() const;

  std::map<std::string, std::string> sensor_;
};

}  // namespace halcyra
