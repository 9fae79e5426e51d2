// When the program asks the voice and assistant services, and what it shows of their answers.
#include <gtest/gtest.h>

#include "tests/e2e/sensor_run.hpp"
#include "tests/e2e/waiting.hpp"

namespace halcyra {
namespace {

std::vector<std::string> refreshes(int count) {
  std::vector<std::string> calls;
  for (int refresh = 0; refresh < count; ++refresh) {
    calls.insert(calls.end(), {"sonmerectl status", "sonmerectl persistence-status",
                               "systemctl --user is-active corvane.service",
                               "systemctl is-active corvane.service"});
  }
  return calls;
}

std::vector<std::string> start_and(int more_refreshes) {
  std::vector<std::string> calls = {"xrandr --current"};
  const std::vector<std::string> all = refreshes(1 + more_refreshes);
  calls.insert(calls.end(), all.begin(), all.end());
  return calls;
}

class RefreshSchedule : public SensorRun {
 protected:
  void expect_refreshes(const std::vector<std::string>& arguments, int after_the_start) {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    const std::size_t calls_before = stage_.calls().size();
    summary_of_run(arguments);
    std::vector<std::string> calls = stage_.calls();
    calls.erase(calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(calls_before));
    EXPECT_EQ(calls, start_and(after_the_start));
  }
};

TEST_F(RefreshSchedule, FirstAndEveryThirtiethFrame) {
  add_good_sets(1);
  expect_refreshes({"--smoke", "--frames", "1"}, 1);
  expect_refreshes({"--smoke", "--frames", "29"}, 1);
  expect_refreshes({"--smoke", "--frames", "30"}, 2);
  expect_refreshes({"--smoke", "--frames", "59"}, 2);
  expect_refreshes({"--smoke", "--frames", "60"}, 3);
}

// Without a sensor a turn is counted at its end, so the count is 1 in the second turn.
TEST_F(RefreshSchedule, SecondAndEveryThirtyFirstTurnWithoutSensor) {
  expect_refreshes({"--no-camera", "--smoke", "--frames", "1"}, 0);
  expect_refreshes({"--no-camera", "--smoke", "--frames", "2"}, 1);
  expect_refreshes({"--no-camera", "--smoke", "--frames", "3"}, 1);
  expect_refreshes({"--no-camera", "--smoke", "--frames", "30"}, 1);
  expect_refreshes({"--no-camera", "--smoke", "--frames", "31"}, 2);
}

TEST_F(RefreshSchedule, UncountedRunAsksOnKeysOnly) {
  DesktopRun run(stage_, {in_readable_window({"--no-camera"})});
  EXPECT_EQ(run.wait_for(camera_less_scene("combo")), "");
  EXPECT_EQ(stage_.calls(), start_and(0));
  run.desktop().press("v");
  EXPECT_TRUE(run.wait_for_message("Status refreshed"));
  EXPECT_EQ(stage_.calls(), start_and(1));
  EXPECT_TRUE(run.quit());
  EXPECT_EQ(stage_.calls(), start_and(1));
}

class Services : public ::testing::Test {
 protected:
  // The dashboard of a run without a sensor, after a voice was reported.
  static ExpectedDashboard voice_scene(const std::string& angle, const std::string& confidence,
                                       const std::string& match) {
    ExpectedDashboard scene = camera_less_scene("combo");
    hear(scene, angle, confidence, match);
    log_message(scene, match);
    return scene;
  }

  static void hear(ExpectedDashboard& scene, const std::string& angle,
                   const std::string& confidence, const std::string& match) {
    scene.status.voice.direction_angle = angle;
    scene.status.voice.direction_confidence = confidence;
    scene.status.room.voice_match = match;
  }

  static void report_running(ExpectedDashboard& scene) {
    scene.status.voice.live_processing = "running";
    scene.status.voice.live_running = true;
    scene.status.voice.default_source = "sonmere_beamformed_mic";
    scene.status.voice.mic_presence = "present";
  }

  std::string shown(const ExpectedDashboard& scene) {
    DesktopRun run(stage_, camera_less_start());
    return run.wait_for(scene);
  }

  static ProgramStart camera_less_start() { return {in_readable_window({"--no-camera"})}; }

  Stage stage_;
};

TEST_F(Services, RunningVoiceServiceIsShown) {
  stage_.answer("sonmerectl status",
                "live_processing: running\ndefault_source: sonmere_beamformed_mic\n");
  ExpectedDashboard scene = camera_less_scene("combo");
  report_running(scene);
  EXPECT_EQ(shown(scene), "");
}

TEST_F(Services, StoppedVoiceServiceIsShown) {
  stage_.answer("sonmerectl status", "some heading\nlive_processing:   stopped by user \n");
  ExpectedDashboard scene = camera_less_scene("combo");
  scene.status.voice.live_processing = "stopped by user";
  EXPECT_EQ(shown(scene), "");
}

TEST_F(Services, MissingControlScriptIsUnknown) {
  stage_.withdraw("sonmerectl");
  stage_.withdraw("systemctl");
  EXPECT_EQ(shown(camera_less_scene("combo")), "");
}

TEST_F(Services, ActiveAssistantLeavesTheDashboardAsItIs) {
  stage_.answer("systemctl --user is-active corvane.service", "active\n");
  stage_.answer("systemctl is-active corvane.service", "failed\n");
  EXPECT_EQ(shown(camera_less_scene("combo")), "");
}

TEST_F(Services, CommandKeyShowsTheNewState) {
  DesktopRun run(stage_, camera_less_start());
  ASSERT_EQ(run.wait_for(camera_less_scene("combo")), "");
  stage_.answer("sonmerectl status",
                "live_processing: running\ndefault_source: sonmere_beamformed_mic\n");
  run.desktop().press("k");
  ExpectedDashboard scene = camera_less_scene("combo");
  report_running(scene);
  log_message(scene, "Sonmere start requested");
  EXPECT_EQ(run.wait_for(scene), "");
}

TEST_F(Services, TrustedVoiceOfNobodyIsUnmatched) {
  stage_.write_event_file(
      "{\n  \"direction_angle_degrees\": -32.5,\n  \"direction_confidence\": 0.81\n}\n");
  EXPECT_EQ(shown(voice_scene("-32.5", "0.81", "unmatched voice left")), "");
}

TEST_F(Services, ConfidenceAtTheLimitIsTrusted) {
  stage_.write_event_file("\"direction_confidence\":0.45,\"direction_angle_degrees\"  :  45");
  EXPECT_EQ(shown(voice_scene("45", "0.45", "unmatched voice far right")), "");
}

TEST_F(Services, LowConfidenceIsSaid) {
  stage_.write_event_file("\"direction_angle_degrees\": 19.9, \"direction_confidence\": 0.44");
  EXPECT_EQ(shown(voice_scene("19.9", "0.44", "low confidence center-right")), "");
}

TEST_F(Services, FlaggedDirectionIsLowConfidence) {
  stage_.write_event_file(
      "\"direction_angle_degrees\": -60, \"direction_confidence\": 0.9, "
      "\"direction_low_confidence\": true");
  ExpectedDashboard scene = voice_scene("-60", "0.9", "low confidence far left");
  scene.status.voice.direction_low_confidence = true;
  EXPECT_EQ(shown(scene), "");
}

TEST_F(Services, FlagWithoutItsBlankIsNoFlag) {
  stage_.write_event_file(
      "\"direction_angle_degrees\": -60, \"direction_confidence\": 0.9, "
      "\"direction_low_confidence\":true");
  EXPECT_EQ(shown(voice_scene("-60", "0.9", "unmatched voice far left")), "");
}

TEST_F(Services, EventFileWithoutDirectionIsNoDirection) {
  stage_.write_event_file("{}");
  EXPECT_EQ(shown(camera_less_scene("combo")), "");
}

TEST_F(Services, EventFileThatIsAFolderIsNoDirection) {
  std::filesystem::create_directories(stage_.event_file());
  EXPECT_EQ(shown(camera_less_scene("combo")), "");
}

TEST_F(Services, HomeWithATrailingSeparatorIsTheSame) {
  stage_.write_event_file("\"direction_angle_degrees\": 1, \"direction_confidence\": 1");
  ProgramStart start = camera_less_start();
  start.environment["HOME"] = stage_.home().string() + "/";
  DesktopRun run(stage_, start);
  EXPECT_EQ(run.wait_for(voice_scene("1", "1", "unmatched voice center-right")), "");
}

TEST_F(Services, WithoutHomeTheWorkingFolderHoldsTheState) {
  stage_.write_event_file("\"direction_angle_degrees\": 1, \"direction_confidence\": 1");
  std::filesystem::rename(stage_.home() / ".local", stage_.working_folder() / ".local");
  ProgramStart start = camera_less_start();
  start.unset = {"HOME"};
  DesktopRun run(stage_, start);
  EXPECT_EQ(run.wait_for(voice_scene("1", "1", "unmatched voice center-right")), "");
}

// The whole life of an event file: it appears, changes, is deleted and comes back.
TEST_F(Services, DirectionFollowsTheEventFileAndOutlivesIt) {
  DesktopRun run(stage_, camera_less_start());
  ExpectedDashboard scene = camera_less_scene("combo");
  ASSERT_EQ(run.wait_for(scene), "");

  std::string logged_match = scene.status.room.voice_match;
  const auto refresh = [&] {
    run.desktop().press("v");
    log_message(scene, "Status refreshed");
    if (scene.status.room.voice_match != logged_match) {
      logged_match = scene.status.room.voice_match;
      log_message(scene, logged_match);
    }
    return run.wait_for(scene);
  };
  stage_.write_event_file("\"direction_angle_degrees\": -10, \"direction_confidence\": 0.9");
  hear(scene, "-10", "0.9", "unmatched voice center-left");
  EXPECT_EQ(refresh(), "");

  std::filesystem::remove(stage_.event_file());
  EXPECT_EQ(refresh(), "");

  stage_.write_event_file("\"direction_angle_degrees\": 30, \"direction_confidence\": 0.9");
  hear(scene, "30", "0.9", "unmatched voice right");
  EXPECT_EQ(refresh(), "");
}

// A sentence without a voice is neither logged nor remembered, so the same direction is not logged
// again when it returns.
TEST_F(Services, SilenceIsNotLogged) {
  const std::string heard = "\"direction_angle_degrees\": 30, \"direction_confidence\": 0.9";
  stage_.write_event_file(heard);
  DesktopRun run(stage_, camera_less_start());
  ExpectedDashboard scene = voice_scene("30", "0.9", "unmatched voice right");
  ASSERT_EQ(run.wait_for(scene), "");

  stage_.write_event_file("{}");
  run.desktop().press("v");
  hear(scene, "unknown", "unknown", "no voice direction");
  log_message(scene, "Status refreshed");
  EXPECT_EQ(run.wait_for(scene), "");

  stage_.write_event_file(heard);
  run.desktop().press("v");
  hear(scene, "30", "0.9", "unmatched voice right");
  log_message(scene, "Status refreshed");
  EXPECT_EQ(run.wait_for(scene), "");
}

}  // namespace
}  // namespace halcyra
