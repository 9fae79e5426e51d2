// People in front of the sensor: the real driver and a recording of what it delivers give the same
// faces.
#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>

#include "dashboard/dashboard_geometry.hpp"
#include "tests/e2e/waiting.hpp"
#include "tests/real_driver/people.hpp"
#include "tests/real_driver/usb_sensor_run.hpp"
#include "tests/support/photograph.hpp"

namespace halcyra {
namespace {

class UsbPhotograph : public UsbSensorRun, public ::testing::WithParamInterface<int> {
 protected:
  UsbPhotograph() {
    const std::filesystem::path sample = stage_.samples_folder() / "front/one.png";
    std::filesystem::create_directories(sample.parent_path());
    cv::imwrite(sample.string(), color_photograph()(photographed_face()));
  }

  static cv::Mat image_area(const cv::Mat& dashboard) {
    Options options;
    options.width = kWidth;
    options.height = kHeight;
    // The window comes up in another size.
    if (dashboard.size() != cv::Size(kWidth, kHeight)) return {};
    return dashboard(dashboard_geometry(options).image_area);
  }
};

INSTANTIATE_TEST_SUITE_P(People, UsbPhotograph, ::testing::Values(0, 1, 2));

TEST_P(UsbPhotograph, GivesTheFacesOfItsRecording) {
  show({people(GetParam())});
  record_sets(1);
  const std::vector<std::string> arguments = {"--smoke", "--frames", "6"};
  Summary summary = summary_of_usb_run(arguments);
  Summary expected = summary_of_run(arguments);
  summary.erase("fps");
  expected.erase("fps");
  EXPECT_EQ(summary, expected);
  const int matched = std::stoi(summary["cc_unknown_predictions"]) +
                      std::stoi(summary["cc_candidate_dorran_predictions"]) +
                      std::stoi(summary["cc_confirmed_dorran_predictions"]);
  EXPECT_EQ(matched, 6 * GetParam());
  EXPECT_EQ(leftovers_of(log()), nothing_left());
}

// Of the recording, the picture is awaited in which somebody has been found.
TEST_P(UsbPhotograph, IsShownLikeItsRecording) {
  show({people(GetParam())});
  record_sets(1);
  const std::vector<std::string> arguments = {"--view", "rgb"};
  const Stage stage_of_recording;
  std::filesystem::create_directories(stage_of_recording.samples_folder());
  std::filesystem::copy(stage_.samples_folder(), stage_of_recording.samples_folder(),
                        std::filesystem::copy_options::recursive);
  DesktopRun recording(stage_of_recording, start(arguments));
  DesktopRun sensor(stage_, start_on_usb(arguments));
  const std::string message = "Face detected: " + std::to_string(GetParam());
  recording.expect_messages({message});
  if (GetParam() > 0) {
    EXPECT_TRUE(recording.wait_for_message(message));
  }
  EXPECT_TRUE(wait_until([&] {
    const cv::Mat expected = image_area(recording.desktop().screenshot());
    const cv::Mat shown = image_area(sensor.desktop().screenshot());
    return !expected.empty() && !shown.empty() && cv::norm(expected, shown, cv::NORM_INF) == 0;
  }));
  EXPECT_TRUE(sensor.quit());
  EXPECT_TRUE(recording.quit());
}

}  // namespace
}  // namespace halcyra
