// The recorder on the real driver.
#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>

#include "tests/real_driver/usb_sensor_run.hpp"
#include "tests/support/same_pixels.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

class UsbRecorder : public UsbSensorRun {
 protected:
  // Runs the recorder to its end and returns its exit status, -1 without one.
  int record(const std::vector<std::string>& options) {
    ProgramStart start = start_on_usb({});
    start.executable = (fs::path(kTimedBuild.program).parent_path() / "halcyra-record").string();
    start.arguments = {"recorded"};
    start.arguments.insert(start.arguments.end(), options.begin(), options.end());
    Program program(stage_, start);
    const std::optional<ProcessEnd> end = program.wait_for_end();
    output_ = program.output();
    errors_ = program.errors();
    return end ? end->exit_status : -1;
  }

  fs::path folder() const { return stage_.working_folder() / "recorded"; }

  std::size_t files_of(const std::string& stream) const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder() / stream), {}));
  }

  cv::Mat written(const std::string& file) const {
    return cv::imread((folder() / file).string(), cv::IMREAD_UNCHANGED);
  }

  std::string output_;
};

// The sensor sees the same all the time.
TEST_F(UsbRecorder, WritesWhatTheDriverDelivers) {
  set_sensor("SERIAL", "012345678901");
  record_sets(1);
  ASSERT_EQ(record({"--sets", "3", "--color", "png"}), 0) << errors_;
  EXPECT_NE(output_.find("Recorded 3 sets in "), std::string::npos) << output_;
  EXPECT_TRUE(same_pixels(written("color/000003.png"), recorded("color")));
  EXPECT_TRUE(same_pixels(written("ir/000003.tiff"), recorded("ir")));
  EXPECT_TRUE(same_pixels(written("depth/000003.tiff"), recorded("depth")));
  const std::string device = read_text(folder() / "device.yml");
  EXPECT_NE(device.find("serial: \"012345678901\"\nfirmware: \"4.0.3911.0\"\ncolor_format: BGRX\n"),
            std::string::npos)
      << device;
}

TEST_F(UsbRecorder, KeepsWhatCameBeforeThePlugWasPulled) {
  set_sensor("UNPLUG_AFTER", "30");
  EXPECT_EQ(record({}), 1);
  EXPECT_NE(errors_.find("halcyra-record: the sensor has stopped delivering complete sets\n"),
            std::string::npos)
      << errors_;
  EXPECT_NE(output_.find("Recorded "), std::string::npos);
  EXPECT_GT(files_of("depth"), 0U);
  EXPECT_EQ(files_of("color"), files_of("depth"));
  EXPECT_EQ(files_of("ir"), files_of("depth"));
}

TEST_F(UsbRecorder, LeavesNothingWhereTheStreamsDoNotStart) {
  set_sensor("FAIL_START", "stream");
  EXPECT_EQ(record({}), 1);
  EXPECT_NE(errors_.find("halcyra-record: failed to start RGB/IR/Depth streams\n"),
            std::string::npos)
      << errors_;
  EXPECT_FALSE(fs::exists(folder()));
}

}  // namespace
}  // namespace halcyra
