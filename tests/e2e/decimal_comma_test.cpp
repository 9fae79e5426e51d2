// Under a locale with a decimal comma every number keeps its decimal point and the dashboard looks
// the same.
#include <algorithm>
#include <regex>

#include <gtest/gtest.h>

#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/sensor_run.hpp"
#include "tests/e2e/waiting.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

const char kLocale[] = "de_DE.UTF-8";

class DecimalComma : public SensorRun {
 protected:
  void SetUp() override {
    ProcessStart compiler;
    compiler.executable = "localedef";
    compiler.arguments = {"--no-archive", "-i",    "de_DE",
                          "-f",           "UTF-8", (locales() / kLocale).string()};
    compiler.environment = {{"PATH", "/usr/bin:/bin"}};
    std::filesystem::create_directories(locales());
    ChildProcess process(compiler);
    const std::optional<ProcessEnd> end = process.wait_for_end();
    ASSERT_TRUE(end && end->exit_status == 0) << "the locale could not be made";
  }

  std::filesystem::path locales() const { return stage_.folder() / "locales"; }

  ProgramStart start_in_locale(const std::vector<std::string>& arguments) const {
    ProgramStart result = start(arguments);
    result.environment["LOCPATH"] = locales().string();
    result.environment["LC_ALL"] = kLocale;
    return result;
  }

  // Whether the process has switched to the locale: only then does it map the number formats.
  bool has_taken_locale(pid_t process) const {
    const std::string maps = read_text("/proc/" + std::to_string(process) + "/maps");
    return maps.find((locales() / kLocale / "LC_NUMERIC").string()) != std::string::npos;
  }
};

void hear(ExpectedDashboard& scene, const std::string& angle, const std::string& confidence,
          const std::string& match) {
  scene.status.voice.direction_angle = angle;
  scene.status.voice.direction_confidence = confidence;
  scene.status.room.voice_match = match;
  log_message(scene, match);
}

// The first event is read before the window system switches the locale, the second afterwards. If
// parsing stopped at the point, its confidence would be 0, which counts as low.
TEST_F(DecimalComma, ChangesNothingOnTheDashboard) {
  recording_.set_device("pace: 0\nserial: \"0.5\"\n");
  add_good_sets(1);
  stage_.write_event_file("{\"direction_angle_degrees\": -32.5, \"direction_confidence\": 0.81}\n");
  DesktopRun run(stage_, start_in_locale({}));
  ExpectedDashboard scene = running_scene("combo");
  run.expect_messages({"Kinect connected: 0.5"});
  std::replace(scene.messages.begin(), scene.messages.end(),
               std::string("Kinect connected: 000000000000"), std::string("Kinect connected: 0.5"));
  hear(scene, "-32.5", "0.81", "unmatched voice left");
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(has_taken_locale(run.program().id()));

  stage_.write_event_file("{\"direction_angle_degrees\": 5.5, \"direction_confidence\": 0.5}\n");
  run.desktop().press("v");
  log_message(scene, "Status refreshed");
  hear(scene, "5.5", "0.5", "unmatched voice center-right");
  EXPECT_EQ(run.wait_for(scene), "");
  EXPECT_TRUE(run.quit());
}

TEST_F(DecimalComma, ChangesNoNumberOfTheSummary) {
  ProgramStart share = start_in_locale({});
  share.arguments = {"--no-camera", "--frames", "40",           "--screen-percent",
                     "0.5",         "--smoke",  "--font-scale", "1.2"};
  Program program(stage_, share);
  const std::optional<ProcessEnd> end = program.wait_for_end();
  ASSERT_TRUE(end && end->exit_status == 0) << program.errors();
  std::map<std::string, std::string> summary = summary_values(program.output());
  EXPECT_EQ(summary["screen_percent"], "0.5");
  EXPECT_EQ(summary["font_scale"], "1.2");
  EXPECT_EQ(summary["size"], "960x600");
  EXPECT_TRUE(std::regex_match(summary["fps"], std::regex("[0-9]+(\\.[0-9]+)?(e[+-]?[0-9]+)?")))
      << summary["fps"];
  EXPECT_EQ(program.output().find(','), std::string::npos);
}

}  // namespace
}  // namespace halcyra
