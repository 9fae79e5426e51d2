// The stand-in for the voice service, asked by the program's own probe.
#include <sys/wait.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "app/run_state/runtime_status.hpp"
#include "probes/voice_service.hpp"
#include "tests/support/environment_variable.hpp"
#include "tests/support/text_file.hpp"
#include "tests/support/working_folder.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

std::string milliseconds_ago(int milliseconds) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto then = now - std::chrono::milliseconds(milliseconds);
  return std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(then).count()) + "\n";
}

class Sonmerectl : public ::testing::Test {
 protected:
  Sonmerectl() { fs::copy(HALCYRA_DEMO "/install", folder_.path() / "install"); }

  static int exit_status(const std::string& verb) {
    const std::string command = "./install/sonmerectl " + verb + " 2>/dev/null >/dev/null";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  const VoiceStatus& refreshed() {
    refresh_voice(status_);
    return status_.voice;
  }

  void set_own_state(const std::string& name, const std::string& value) const {
    write_text(folder_.path() / ".local/state/sonmere" / name, value);
  }

  void started_long_ago() const {
    EXPECT_EQ(exit_status("start"), 0);
    set_own_state("running_since", milliseconds_ago(60000));
  }

  // The status that is read so many milliseconds after the first picture.
  const VoiceStatus& refreshed_after(int milliseconds) {
    set_own_state("times_asked", "2\n");
    set_own_state("first_picture", milliseconds_ago(milliseconds));
    return refreshed();
  }

  WorkingFolder folder_;
  EnvironmentVariable home_{"HOME", folder_.path().string()};
  RuntimeStatus status_;
};

TEST_F(Sonmerectl, IsStoppedAtFirst) {
  const VoiceStatus& voice = refreshed();
  EXPECT_EQ(voice.live_processing, "stopped");
  EXPECT_FALSE(voice.live_running);
  EXPECT_EQ(voice.mic_presence, "not present");
  EXPECT_EQ(voice.systemd_user_active, "inactive");
  EXPECT_EQ(voice.default_source, "alsa_input.pci-0000_00_1f.3.analog-stereo");
  EXPECT_EQ(voice.event_path, "unknown");
  EXPECT_EQ(voice.wav_path, "unknown");
}

TEST_F(Sonmerectl, TakesAWhileToStart) {
  EXPECT_EQ(exit_status("start"), 0);
  EXPECT_EQ(refreshed().live_processing, "starting");
  EXPECT_EQ(status_.voice.mic_presence, "not present");
  EXPECT_EQ(status_.voice.systemd_user_active, "activating");
  EXPECT_FALSE(status_.voice.live_running);
  set_own_state("running_since", milliseconds_ago(2000));
  EXPECT_EQ(refreshed().live_processing, "running");
  EXPECT_EQ(status_.voice.mic_presence, "present");
  EXPECT_EQ(status_.voice.systemd_user_active, "active");
  EXPECT_TRUE(status_.voice.live_running);
}

TEST_F(Sonmerectl, KeepsRunningWhenStartedAgain) {
  started_long_ago();
  EXPECT_EQ(exit_status("start"), 0);
  EXPECT_EQ(refreshed().live_processing, "running");
}

TEST_F(Sonmerectl, LeavesARecordingOfOneSecond) {
  started_long_ago();
  EXPECT_EQ(refreshed().wav_path,
            (folder_.path() / ".local/state/halcyra/first-run-beamformed.wav").string());
  const std::string recording = read_text(status_.voice.wav_path);
  EXPECT_EQ(recording.size(), 44U + 32000U);
  EXPECT_EQ(recording.substr(0, 4), "RIFF");
  EXPECT_EQ(recording.substr(8, 8), "WAVEfmt ");
  EXPECT_EQ(recording.substr(36, 4), "data");
}

TEST_F(Sonmerectl, BecomesTheDefaultMicrophoneAndGivesItBack) {
  started_long_ago();
  EXPECT_EQ(exit_status("make-default"), 0);
  EXPECT_EQ(refreshed().default_source, "sonmere_beamformed_mic");
  EXPECT_EQ(exit_status("restore-default"), 0);
  EXPECT_EQ(refreshed().default_source, "alsa_input.pci-0000_00_1f.3.analog-stereo");
}

TEST_F(Sonmerectl, TakesItsMicrophoneAlongWhenItStops) {
  started_long_ago();
  EXPECT_EQ(exit_status("make-default"), 0);
  EXPECT_EQ(exit_status("stop"), 0);
  EXPECT_EQ(refreshed().live_processing, "stopped");
  EXPECT_EQ(status_.voice.mic_presence, "not present");
  EXPECT_EQ(status_.voice.default_source, "alsa_input.pci-0000_00_1f.3.analog-stereo");
  EXPECT_EQ(exit_status("make-default"), 1);
}

TEST_F(Sonmerectl, HearsNobodyBeforeTheFirstPicture) {
  started_long_ago();
  EXPECT_EQ(refreshed().event_path, "unknown");  // while the program starts
  EXPECT_NE(refreshed().event_path, "unknown");  // with its first picture
  EXPECT_EQ(status_.voice.direction_angle, "-4.0");
}

TEST_F(Sonmerectl, HearsVoicesMoveAndFade) {
  started_long_ago();
  EXPECT_EQ(refreshed_after(1000).direction_angle.substr(0, 3), "-4.");
  EXPECT_EQ(status_.voice.direction_confidence, "0.86");
  EXPECT_FALSE(status_.voice.direction_low_confidence);
  EXPECT_EQ(refreshed_after(7000).direction_confidence, "0.31");
  EXPECT_EQ(refreshed_after(24000).direction_angle.substr(0, 4), "-50.");
  EXPECT_TRUE(refreshed_after(35000).direction_low_confidence);
  EXPECT_EQ(refreshed_after(59000).direction_angle.substr(0, 3), "30.");
  EXPECT_EQ(refreshed_after(61000).direction_angle.substr(0, 3), "-4.");  // the next minute
}

TEST_F(Sonmerectl, HearsNothingNewWhileStopped) {
  started_long_ago();
  EXPECT_EQ(refreshed_after(59000).direction_confidence, "0.60");
  EXPECT_EQ(exit_status("stop"), 0);
  EXPECT_EQ(refreshed_after(7000).direction_confidence, "0.60");
}

TEST_F(Sonmerectl, RefusesWhatItDoesNotKnow) {
  EXPECT_EQ(exit_status(""), 2);
  EXPECT_EQ(exit_status("sing"), 2);
}

}  // namespace
}  // namespace halcyra
