// The image that --layout-test writes.
#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>

#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/scenes.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

class LayoutImage : public ::testing::Test {
 protected:
  // Runs to the end and returns the values of the summary.
  std::map<std::string, std::string> run(const std::vector<std::string>& arguments) {
    Program program(stage_, {arguments, server_.display()});
    const std::optional<ProcessEnd> end = program.wait_for_end();
    EXPECT_TRUE(end && end->exit_status == 0) << program.errors();
    return summary_values(program.output());
  }

  std::vector<std::string> captures() const {
    std::vector<std::string> names;
    for (const auto& entry :
         std::filesystem::directory_iterator(stage_.working_folder() / "captures")) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  // The dashboard of the first turn: room overview, an empty room, before the image is logged.
  ExpectedDashboard first_turn(cv::Size size, double font_scale) const {
    ExpectedDashboard scene = camera_less_scene("room_overview");
    scene.options.width = size.width;
    scene.options.height = size.height;
    scene.options.font_scale = font_scale;
    scene.from = started_;
    return scene;
  }

  Stage stage_;
  XServer server_;
  std::time_t started_ = std::time(nullptr);
};

TEST_F(LayoutImage, IsTheDashboardOfTheFirstTurn) {
  const std::map<std::string, std::string> summary = run(in_readable_window({"--layout-test"}));
  EXPECT_EQ(summary.at("frames"), "30");
  const std::string name = "control-center-layout-test-1440x1080.png";
  ASSERT_EQ(captures(), std::vector<std::string>{name});
  const cv::Mat image = cv::imread((stage_.working_folder() / "captures" / name).string());
  EXPECT_EQ(difference(image, first_turn({kWidth, kHeight}, kFontScale)), "");
}

TEST_F(LayoutImage, FollowsTheSizeAndTextOfTheWindow) {
  run({"--layout-test", "--frames", "1", "--width", "800", "--height", "480", "--font-scale", "1"});
  const std::string name = "control-center-layout-test-800x480.png";
  ASSERT_EQ(captures(), std::vector<std::string>{name});
  const cv::Mat image = cv::imread((stage_.working_folder() / "captures" / name).string());
  EXPECT_EQ(difference(image, first_turn({800, 480}, 1.0)), "");
}

TEST_F(LayoutImage, OfAFullscreenRunHasTheStartUpSize) {
  run({"--layout-test", "--frames", "1", "--fullscreen", "--width", "1000", "--height", "600",
       "--font-scale", "1"});
  EXPECT_EQ(captures(), std::vector<std::string>{"control-center-layout-test-1000x600.png"});
}

TEST_F(LayoutImage, ReplacesAnOlderOne) {
  const std::filesystem::path image =
      stage_.working_folder() / "captures/control-center-layout-test-800x480.png";
  write_text(image, "old");
  run({"--layout-test", "--frames", "1", "--width", "800", "--height", "480"});
  EXPECT_EQ(cv::imread(image.string()).size(), cv::Size(800, 480));
}

// The folder cannot be made and the image cannot be written; the run goes on and logs the image
// all the same.
TEST_F(LayoutImage, CapturesThatIsAFileDoesNotEndTheRun) {
  write_text(stage_.working_folder() / "captures", "in the way");
  DesktopRun run(stage_, {in_readable_window({"--layout-test", "--frames", "100000"})});
  const std::string path = "captures/control-center-layout-test-1440x1080.png";
  run.expect_messages({"Layout test image written: " + path});
  EXPECT_TRUE(run.wait_for_message("Layout test image written: " + path));
  ExpectedDashboard scene = camera_less_scene("room_overview");
  log_message(scene, "Layout test image written: " + path);
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(read_text(stage_.working_folder() / "captures"), "in the way");
}

TEST_F(LayoutImage, IsNotWrittenWithoutTheOption) {
  run({"--no-camera", "--frames", "2", "--view", "room_overview"});
  EXPECT_FALSE(std::filesystem::exists(stage_.working_folder() / "captures"));
}

}  // namespace
}  // namespace halcyra
