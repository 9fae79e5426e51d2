#include "tests/real_driver/usb_sensor_run.hpp"

#include <algorithm>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "capture/frame_conversion.hpp"
#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/waiting.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

constexpr char kTools[] = HALCYRA_REAL_DRIVER "/tools/";
const cv::Size kColorSize(1920, 1080);

}  // namespace

const DriverBuild kTimedBuild = {"TimeLimitWorks",
                                 HALCYRA_REAL_DRIVER "/program/halcyra-control-center", ""};

std::vector<DriverBuild> driver_builds() {
  return {
      kTimedBuild,
      {"TimeLimitIgnored", HALCYRA_REAL_DRIVER "/program-by-pkg-config/halcyra-control-center", ""},
      {"BuiltForTheOther", kTimedBuild.program,
       HALCYRA_REAL_DRIVER "/driver-without-time-limit/lib"}};
}

UsbSensorRun::UsbSensorRun() {
  // At the usual thirty the driver may drop sets on a slow machine; no test waits for a certain
  // one.
  set_sensor("FPS", "10");
  set_sensor("SERIAL", "000000000000");
  set_sensor("LOG", log().string());
  show({empty_room_picture()});
}

void UsbSensorRun::SetUp() {
  if (!std::filesystem::exists(kTools)) GTEST_SKIP() << "libfreenect2 was not built";
}

void UsbSensorRun::set_sensor(const std::string& name, const std::string& value) {
  sensor_["USB_KINECT_" + name] = value;
}

void UsbSensorRun::show(const std::vector<cv::Mat>& pictures) {
  const std::filesystem::path folder = stage_.folder() / "seen";
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  std::filesystem::path last;
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const std::filesystem::path file = folder / (std::to_string(100 + i) + ".jpg");
    if (i > 0 && pictures[i].data == pictures[i - 1].data) {
      std::filesystem::create_hard_link(last, file);
    } else {
      cv::Mat picture;
      cv::resize(pictures[i], picture, kColorSize, 0, 0, cv::INTER_CUBIC);
      cv::imwrite(file.string(), picture);
    }
    last = file;
  }
  set_sensor("COLOR", folder.string());
}

std::map<std::string, std::string> UsbSensorRun::environment() const {
  std::map<std::string, std::string> result = sensor_;
  result["LD_PRELOAD"] = HALCYRA_USB_KINECT;
  result["LIBFREENECT2_PIPELINE"] = "cpu";
  return result;
}

ProgramStart UsbSensorRun::start_on_usb(const std::vector<std::string>& arguments,
                                        const DriverBuild& build) const {
  std::filesystem::remove(log());
  ProgramStart start = {in_readable_window(arguments), "", environment(), build.program};
  const std::string driver_folder = build.driver_folder;
  if (!driver_folder.empty()) start.environment["LD_LIBRARY_PATH"] = driver_folder;
  return start;
}

Summary UsbSensorRun::summary_of_usb_run(const std::vector<std::string>& arguments) {
  Program program(stage_, start_on_usb(arguments));
  const std::optional<ProcessEnd> end = program.wait_for_end();
  EXPECT_TRUE(end && end->exit_status == 0) << program.errors();
  return summary_values(program.output());
}

std::string UsbSensorRun::output_of_tool(const std::string& tool,
                                         const std::vector<std::string>& arguments) {
  ProcessStart start;
  start.executable = kTools + tool;
  start.arguments = arguments;
  start.environment = environment();
  // The driver's own lines go to the same stream.
  start.environment["LIBFREENECT2_LOGGER_LEVEL"] = "none";
  start.stdout_file = stage_.folder() / "tool-output";
  ChildProcess process(start);
  const std::optional<ProcessEnd> end = process.wait_for_end();
  EXPECT_TRUE(end && end->exit_status == 0) << tool;
  return read_text(start.stdout_file);
}

std::string UsbSensorRun::record_sets(int count) {
  std::filesystem::remove_all(recording_.folder());
  recording_ = Recording(recording_.folder());
  recording_.set_device("pace: 0\n");
  return output_of_tool("record-frames", {recording_.folder().string(), std::to_string(count)});
}

cv::Mat UsbSensorRun::recorded(const std::string& stream) const {
  const std::string file = stream == "color" ? "/100.png" : "/100.tiff";
  return cv::imread((recording_.folder() / stream).string() + file, cv::IMREAD_UNCHANGED);
}

ExpectedDashboard UsbSensorRun::recorded_scene(const std::string& view) const {
  ExpectedDashboard scene = running_scene(view);
  scene.color = recorded("color");
  EXPECT_TRUE(infrared_picture(recorded("ir"), scene.infrared));
  EXPECT_TRUE(depth_picture(recorded("depth"), scene.depth));
  return scene;
}

std::string UsbSensorRun::wait_for_streams(DesktopRun& run, ExpectedDashboard expected) {
  const std::string sentences[] = {expected.status.kinect_message,
                                   stalled_scene("combo").status.kinect_message};
  expected.from = run.started();
  std::string last_difference;
  wait_until([&] {
    const cv::Mat picture = run.desktop().screenshot();
    return std::any_of(std::begin(sentences), std::end(sentences), [&](const std::string& said) {
      expected.status.kinect_message = said;
      last_difference = difference(picture, expected);
      return last_difference.empty();
    });
  });
  return last_difference;
}

bool UsbSensorRun::wait_for_log(const std::string& text) const {
  return wait_until([&] { return lines_with(log(), text) > 0; });
}

void UsbSensorRun::expect_live_keys(DesktopRun& run) {
  run.desktop().press("b");
  EXPECT_TRUE(run.wait_for_message("Debug boxes/detail enabled"));
  EXPECT_TRUE(run.quit());
}

}  // namespace halcyra
