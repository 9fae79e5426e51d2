// Reports and state files with odd content or of enormous size.
#include <gtest/gtest.h>

#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/scenes.hpp"

namespace halcyra {
namespace {

using std::string_literals::operator""s;

constexpr std::size_t kFiveMegabytes = 5U << 20U;

class OddReports : public ::testing::Test {
 protected:
  std::string shown(const ExpectedDashboard& scene) {
    DesktopRun run(stage_, {in_readable_window({"--no-camera"})});
    std::string difference = run.wait_for(scene);
    EXPECT_TRUE(run.quit());
    return difference;
  }

  static ExpectedDashboard scene_with_processing(const std::string& live_processing) {
    ExpectedDashboard scene = camera_less_scene("combo");
    scene.status.voice.live_processing = live_processing;
    scene.status.voice.live_running = live_processing.find("running") != std::string::npos;
    return scene;
  }

  static ExpectedDashboard scene_with_direction(const std::string& angle,
                                                const std::string& confidence,
                                                const std::string& match) {
    ExpectedDashboard scene = camera_less_scene("combo");
    scene.status.voice.direction_angle = angle;
    scene.status.voice.direction_confidence = confidence;
    scene.status.room.voice_match = match;
    if (match != "no voice direction") log_message(scene, match);
    return scene;
  }

  Stage stage_;
};

TEST_F(OddReports, ValueOfMegabytes) {
  const std::string value(kFiveMegabytes, 'x');
  stage_.answer("sonmerectl status", "live_processing: " + value);
  EXPECT_EQ(shown(scene_with_processing(value)), "");
}

TEST_F(OddReports, ValueAfterMegabytes) {
  stage_.answer("sonmerectl status",
                std::string(kFiveMegabytes, ':') + "\nlive_processing: running now\n");
  EXPECT_EQ(shown(scene_with_processing("running now")), "");
}

TEST_F(OddReports, MegabytesOfLines) {
  std::string report;
  while (report.size() < kFiveMegabytes) report += "live_processing:none\n";
  stage_.answer("sonmerectl status", report + "live_processing: running\n");
  EXPECT_EQ(shown(scene_with_processing("running")), "");
}

TEST_F(OddReports, BytesOfZero) {
  stage_.answer("sonmerectl status", "\0\0live_processing: run\0running\n"s);
  EXPECT_EQ(shown(scene_with_processing("run\0running"s)), "");
}

TEST_F(OddReports, InvalidUtf8) {
  const std::string value = "\xff\xfe running \xc3( \xe2\x82";
  stage_.answer("sonmerectl status", "live_processing: " + value + "\n");
  EXPECT_EQ(shown(scene_with_processing(value)), "");
}

TEST_F(OddReports, CarriageReturns) {
  stage_.answer("sonmerectl status",
                "live_processing: running\r\ndefault_source: Sonmere Beamformed Mic\r\n");
  ExpectedDashboard scene = scene_with_processing("running");
  scene.status.voice.mic_presence = "present";
  EXPECT_EQ(shown(scene), "");
}

TEST_F(OddReports, BlankValueIsEmpty) {
  stage_.answer("sonmerectl status", "live_processing:  \t \r\n");
  EXPECT_EQ(shown(scene_with_processing("")), "");
}

TEST_F(OddReports, AngleOfMegabytesIsOutOfRange) {
  const std::string digits(kFiveMegabytes, '7');
  stage_.write_event_file("\"direction_angle_degrees\": " + digits +
                          ", \"direction_confidence\": 0.9");
  EXPECT_EQ(shown(scene_with_direction(digits, "0.9", "no voice direction")), "");
}

TEST_F(OddReports, AngleWithMegabytesOfDecimals) {
  const std::string number = "-3." + std::string(kFiveMegabytes, '1');
  stage_.write_event_file("\"direction_angle_degrees\": " + number +
                          ", \"direction_confidence\": 0.9");
  EXPECT_EQ(shown(scene_with_direction(number, "0.9", "unmatched voice center-left")), "");
}

TEST_F(OddReports, ConfidenceOfMegabytesIsLow) {
  const std::string digits(kFiveMegabytes, '9');
  stage_.write_event_file("\"direction_angle_degrees\": 3, \"direction_confidence\": " + digits);
  EXPECT_EQ(shown(scene_with_direction("3", digits, "low confidence center-right")), "");
}

TEST_F(OddReports, NumbersThatAreNone) {
  stage_.write_event_file("\"direction_angle_degrees\": --..--, \"direction_confidence\": -.-");
  EXPECT_EQ(shown(scene_with_direction("--..--", "-.-", "no voice direction")), "");
}

TEST_F(OddReports, NumberIsReadUpToASecondPoint) {
  stage_.write_event_file("\"direction_angle_degrees\": 21.5.9, \"direction_confidence\": 1e-3");
  EXPECT_EQ(shown(scene_with_direction("21.5.9", "1", "unmatched voice right")), "");
}

TEST_F(OddReports, EventFileOfMegabytesOfNoise) {
  std::string noise(kFiveMegabytes, '\0');
  for (std::size_t i = 0; i < noise.size(); ++i) noise[i] = static_cast<char>(i * 7919 % 251);
  stage_.write_event_file(noise + "\"direction_angle_degrees\": 3, \"direction_confidence\": 1");
  EXPECT_EQ(shown(scene_with_direction("3", "1", "unmatched voice center-right")), "");
}

TEST_F(OddReports, EveryCommandWritesMegabytes) {
  const std::string rubbish(kFiveMegabytes, '#');
  stage_.answer("sonmerectl persistence-status", "systemd_user_active: " + rubbish);
  stage_.answer("systemctl --user is-active corvane.service", rubbish);
  stage_.answer("systemctl is-active corvane.service", rubbish);
  stage_.answer("xrandr --current", rubbish + "A connected 1920x1200+0+0\n");
  EXPECT_EQ(shown(camera_less_scene("combo")), "");
}

}  // namespace
}  // namespace halcyra
