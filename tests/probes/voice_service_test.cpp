// The voice service's state as a fake control script and fake state files report it.
#include "probes/voice_service.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/run_state/runtime_status.hpp"
#include "tests/probes/expressions.hpp"
#include "tests/probes/random_text.hpp"
#include "tests/probes/standard_search.hpp"
#include "tests/support/environment_variable.hpp"
#include "tests/support/fake_commands.hpp"
#include "tests/support/working_folder.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

using std::string_literals::operator""s;

constexpr const char* kStateFolder = ".local/state/halcyra";
constexpr const char* kEventName = "first-run-event.json";
constexpr const char* kRecordingName = "first-run-beamformed.wav";

const std::string kEvent = R"({"direction_angle_degrees": -32.5, "direction_confidence": 0.81,)"
                           R"( "direction_low_confidence": true})";

class RefreshVoice : public testing::Test {
 protected:
  void report(const std::string& status, const std::string& persistence, int exit_status = 0) {
    const fs::path script = folder_.path() / "install/sonmerectl";
    commands_.answer(script, "status", status, exit_status);
    commands_.answer(script, "persistence-status", persistence, exit_status);
  }

  fs::path event_file() const { return home_folder_.path() / kStateFolder / kEventName; }
  fs::path recording() const { return home_folder_.path() / kStateFolder / kRecordingName; }

  const VoiceStatus& refresh() {
    refresh_voice(status_);
    return status_.voice;
  }

  const VoiceStatus& refresh_with_event(const std::string& event) {
    write_file(event_file(), event);
    return refresh();
  }

  // The event file exists, but reads as empty.
  void expect_seen_but_empty() {
    status_.voice.direction_angle = "12";
    status_.voice.direction_confidence = "0.5";
    status_.voice.direction_low_confidence = true;
    const VoiceStatus& voice = refresh();
    EXPECT_EQ(voice.event_path, event_file().string());
    EXPECT_EQ(voice.direction_angle, "unknown");
    EXPECT_EQ(voice.direction_confidence, "unknown");
    EXPECT_FALSE(voice.direction_low_confidence);
  }

  TemporaryFolder home_folder_;
  EnvironmentVariable home_{"HOME", home_folder_.path().string()};
  WorkingFolder folder_;
  FakeCommands commands_;
  RuntimeStatus status_;
};

TEST_F(RefreshVoice, ReadsTheReports) {
  report("live_processing: running\ndefault_source: sonmere_beamformed_mic\n",
         "systemd_user_active: active\n");
  const VoiceStatus& voice = refresh();
  EXPECT_EQ(voice.live_processing, "running");
  EXPECT_TRUE(voice.live_running);
  EXPECT_EQ(voice.default_source, "sonmere_beamformed_mic");
  EXPECT_EQ(voice.mic_presence, "present");
  EXPECT_EQ(voice.systemd_user_active, "active");
  EXPECT_EQ(commands_.calls(),
            (std::vector<std::string>{"sonmerectl status", "sonmerectl persistence-status"}));
}

TEST_F(RefreshVoice, IsUnknownWithoutTheScript) {
  status_.voice = {"running", "sonmere", "present", "active", "unknown",
                   "unknown", "12",      "0.5",     true,     true};
  testing::internal::CaptureStderr();
  const VoiceStatus& voice = refresh();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(voice.live_processing, "unknown");
  EXPECT_EQ(voice.default_source, "unknown");
  EXPECT_EQ(voice.mic_presence, "not present");
  EXPECT_EQ(voice.systemd_user_active, "unknown");
  EXPECT_FALSE(voice.live_running);
  EXPECT_TRUE(status_.events.empty());
}

TEST_F(RefreshVoice, IsUnknownWhereAReportLacksTheKey) {
  report("systemd_user_active: active\nlive_processing:running\ndefault_source:\n",
         "live_processing: running\ndefault_source: sonmere_beamformed_mic\n");
  const VoiceStatus& voice = refresh();
  EXPECT_EQ(voice.live_processing, "unknown");
  EXPECT_EQ(voice.default_source, "unknown");
  EXPECT_EQ(voice.mic_presence, "not present");
  EXPECT_EQ(voice.systemd_user_active, "unknown");
}

TEST_F(RefreshVoice, ReadsTheReportsOfAFailingScript) {
  report("live_processing: stopped\n", "systemd_user_active: failed\n", 3);
  const VoiceStatus& voice = refresh();
  EXPECT_EQ(voice.live_processing, "stopped");
  EXPECT_EQ(voice.systemd_user_active, "failed");
}

TEST_F(RefreshVoice, FindsTheMicrophoneByItsNameOrDescription) {
  for (const std::string text : {"sources: sonmere_beamformed_mic, other", "Sonmere Beamformed Mic",
                                 "xsonmere_beamformed_micx"}) {
    report(text, "");
    EXPECT_EQ(refresh().mic_presence, "present") << text;
  }
  for (const std::string text :
       {"Sonmere_beamformed_mic", "sonmere beamformed mic", "sonmere", ""}) {
    report(text, "sonmere_beamformed_mic Sonmere Beamformed Mic");
    EXPECT_EQ(refresh().mic_presence, "not present") << text;
  }
}

TEST_F(RefreshVoice, RunsWhenTheLineSaysRunningAnywhere) {
  for (const std::string text : {"running", "not running", "prerunnings"}) {
    report("live_processing: " + text, "");
    EXPECT_TRUE(refresh().live_running) << text;
  }
  for (const std::string text : {"stopped", "Running", "\nrunning"}) {
    report("live_processing: " + text, "");
    EXPECT_FALSE(refresh().live_running) << text;
  }
}

TEST_F(RefreshVoice, TrimsValuesAndKeepsTheirBytes) {
  report("live_processing:  a\0b\xFF \t\r\ndefault_source: \v x \r\n"s,
         "x systemd_user_active: first\nsystemd_user_active: second\n");
  const VoiceStatus& voice = refresh();
  EXPECT_EQ(voice.live_processing, "a\0b\xFF"s);
  EXPECT_EQ(voice.default_source, "\v x");
  EXPECT_EQ(voice.systemd_user_active, "first");
}

TEST_F(RefreshVoice, TakesReportsAndEventsOfMegabytes) {
  const std::string filler(1 << 20, 'x');
  report(filler + "live_processing: " + filler + "\n" + filler + "sonmere_beamformed_mic", filler);
  const VoiceStatus& voice =
      refresh_with_event(filler + "\"direction_confidence\"" + std::string(1 << 20, ' ') + ": 0.5");
  EXPECT_TRUE(voice.live_processing == filler);
  EXPECT_EQ(voice.mic_presence, "present");
  EXPECT_EQ(voice.systemd_user_active, "unknown");
  EXPECT_EQ(voice.direction_confidence, "0.5");
}

TEST_F(RefreshVoice, ReadsTheDirection) {
  const VoiceStatus& voice = refresh_with_event(kEvent);
  EXPECT_EQ(voice.event_path, event_file().string());
  EXPECT_EQ(voice.wav_path, "unknown");
  EXPECT_EQ(voice.direction_angle, "-32.5");
  EXPECT_EQ(voice.direction_confidence, "0.81");
  EXPECT_TRUE(voice.direction_low_confidence);
}

TEST_F(RefreshVoice, ReadsTheDirectionInAnyOrderAndSpacing) {
  for (const std::string blank : {"", " ", "\t", "\n", "\v", "\f", "\r", " \v\r\n "}) {
    const std::string colon = blank + ":" + blank;
    const VoiceStatus& voice = refresh_with_event("\0\xFF{\"direction_confidence\""s + colon +
                                                  "0.5}\"direction_angle_degrees\"" + colon + "7");
    EXPECT_EQ(voice.direction_angle, "7");
    EXPECT_EQ(voice.direction_confidence, "0.5");
  }
}

TEST_F(RefreshVoice, TakesOnlySignsDigitsAndPoints) {
  for (const auto& [written, expected] :
       std::vector<std::pair<std::string, std::string>>{{"1e-3", "1"},
                                                        {"-0.5,", "-0.5"},
                                                        {"--..9-", "--..9-"},
                                                        {"12 deg", "12"},
                                                        {"\"12\"", "unknown"},
                                                        {"+12", "unknown"},
                                                        {"null", "unknown"},
                                                        {"", "unknown"},
                                                        {"e5", "unknown"},
                                                        {"\xA0"
                                                         "5",
                                                         "unknown"}}) {
    EXPECT_EQ(refresh_with_event("\"direction_angle_degrees\": " + written).direction_angle,
              expected);
    EXPECT_EQ(refresh_with_event("\"direction_confidence\": " + written).direction_confidence,
              expected);
  }
}

TEST_F(RefreshVoice, IsUnknownWhereTheEventLacksTheKeys) {
  refresh_with_event(kEvent);
  const VoiceStatus& voice = refresh_with_event(
      R"({direction_angle_degrees: 5, "direction_angle": 6, "Direction_confidence": 0.7})");
  EXPECT_EQ(voice.direction_angle, "unknown");
  EXPECT_EQ(voice.direction_confidence, "unknown");
  EXPECT_FALSE(voice.direction_low_confidence);
}

TEST_F(RefreshVoice, NeedsTheLowConfidenceFlagInItsExactSpelling) {
  for (const std::string text :
       {"\"direction_low_confidence\":true", "\"direction_low_confidence\":  true",
        "\"direction_low_confidence\" : true", "\"direction_low_confidence\":\ttrue",
        "\"direction_low_confidence\": True", "\"direction_low_confidence\": false",
        "direction_low_confidence: true", ""}) {
    EXPECT_FALSE(refresh_with_event(text).direction_low_confidence) << text;
  }
  EXPECT_TRUE(
      refresh_with_event("x\"direction_low_confidence\": trueish").direction_low_confidence);
}

TEST_F(RefreshVoice, KeepsTheLastDirectionWhenTheEventDisappears) {
  write_file(recording(), "");
  refresh_with_event(kEvent);
  fs::remove_all(home_folder_.path() / ".local");
  const VoiceStatus& voice = refresh();
  EXPECT_EQ(voice.direction_angle, "-32.5");
  EXPECT_EQ(voice.direction_confidence, "0.81");
  EXPECT_TRUE(voice.direction_low_confidence);
  EXPECT_EQ(voice.event_path, event_file().string());
  EXPECT_EQ(voice.wav_path, recording().string());
}

TEST_F(RefreshVoice, FindsTheRecordingWithoutAnEvent) {
  write_file(recording(), "");
  const VoiceStatus& voice = refresh();
  EXPECT_EQ(voice.wav_path, recording().string());
  EXPECT_EQ(voice.event_path, "unknown");
  EXPECT_EQ(voice.direction_angle, "unknown");
}

TEST_F(RefreshVoice, DoesNotDoubleTheSeparatorOfTheHomeFolder) {
  const EnvironmentVariable home("HOME", home_folder_.path().string() + "/");
  write_file(recording(), "");
  const VoiceStatus& voice = refresh_with_event(kEvent);
  EXPECT_EQ(voice.event_path, event_file().string());
  EXPECT_EQ(voice.wav_path, recording().string());
  EXPECT_EQ(voice.direction_angle, "-32.5");
}

TEST_F(RefreshVoice, LooksUnderTheWorkingFolderWithoutAHome) {
  const EnvironmentVariable home("HOME", std::nullopt);
  write_file(fs::path(kStateFolder) / kEventName, kEvent);
  write_file(fs::path(kStateFolder) / kRecordingName, "");
  const VoiceStatus& voice = refresh();
  EXPECT_EQ(voice.event_path, "./.local/state/halcyra/first-run-event.json");
  EXPECT_EQ(voice.wav_path, "./.local/state/halcyra/first-run-beamformed.wav");
  EXPECT_EQ(voice.direction_angle, "-32.5");
}

TEST_F(RefreshVoice, ReadsAFolderInThePlaceOfTheEventAsEmpty) {
  fs::create_directories(event_file());
  expect_seen_but_empty();
}

// A pipe that nobody writes to would hold the reader for ever; the alarm ends the test instead.
TEST_F(RefreshVoice, ReadsAPipeInThePlaceOfTheEventAsEmpty) {
  fs::create_directories(event_file().parent_path());
  ASSERT_EQ(mkfifo(event_file().c_str(), 0600), 0);
  alarm(30);
  expect_seen_but_empty();
  alarm(0);
}

TEST_F(RefreshVoice, ReadsAnEventWithoutReadPermissionAsEmpty) {
  if (geteuid() == 0) GTEST_SKIP() << "the superuser can read every file";
  write_file(event_file(), kEvent);
  fs::permissions(event_file(), fs::perms::none);
  expect_seen_but_empty();
}

// A regular file that opens, but whose first read fails.
TEST_F(RefreshVoice, ReadsAnEventThatFailsToReadAsEmpty) {
  fs::create_directories(event_file().parent_path());
  fs::create_symlink("/proc/self/mem", event_file());
  expect_seen_but_empty();
}

TEST_F(RefreshVoice, ReadsAnEmptyEvent) {
  write_file(event_file(), "");
  expect_seen_but_empty();
}

TEST_F(RefreshVoice, SeesWhatTheStandardLibrarySees) {
  RandomText reports(31415, report_pieces());
  RandomText events(92653, event_pieces());
  const VoiceExpressions wanted;
  for (int i = 0; i < 60; ++i) {
    const std::string status = reports.next(12);
    const std::string persistence = reports.next(12);
    const std::string event = events.next(12);
    SCOPED_TRACE(testing::PrintToString(status) + " and " + testing::PrintToString(persistence) +
                 " and " + testing::PrintToString(event));
    report(status, persistence);
    const VoiceStatus& voice = refresh_with_event(event);
    const auto found = [](const std::string& text, const std::string& expression) {
      return standard_first_match(text, expression, "unknown");
    };
    EXPECT_EQ(voice.live_processing, found(status, wanted.live_processing));
    EXPECT_EQ(voice.default_source, found(status, wanted.default_source));
    EXPECT_EQ(voice.systemd_user_active, found(persistence, wanted.systemd_user_active));
    EXPECT_EQ(voice.direction_angle, found(event, wanted.angle));
    EXPECT_EQ(voice.direction_confidence, found(event, wanted.confidence));
  }
}

}  // namespace
}  // namespace halcyra
