#include "probes/voice_reports.hpp"

#include <gtest/gtest.h>

namespace halcyra {
namespace {

TEST(VoiceReports, SetWhatTheyTell) {
  VoiceStatus voice;
  read_voice_reports("live_processing: running \ndefault_source: sonmere_beamformed_mic\n",
                     "systemd_user_active: active\n", voice);
  EXPECT_EQ(voice.live_processing, "running");
  EXPECT_TRUE(voice.live_running);
  EXPECT_EQ(voice.default_source, "sonmere_beamformed_mic");
  EXPECT_EQ(voice.mic_presence, "present");
  EXPECT_EQ(voice.systemd_user_active, "active");
}

TEST(VoiceReports, AreEachReadForTheirOwnKeys) {
  VoiceStatus voice;
  read_voice_reports("systemd_user_active: active\n", "live_processing: running\n", voice);
  EXPECT_EQ(voice.live_processing, "unknown");
  EXPECT_EQ(voice.systemd_user_active, "unknown");
}

TEST(VoiceReports, OverwriteWhatWasThere) {
  VoiceStatus voice;
  voice.live_processing = "running";
  voice.live_running = true;
  voice.mic_presence = "present";
  read_voice_reports("", "", voice);
  EXPECT_EQ(voice.live_processing, "unknown");
  EXPECT_FALSE(voice.live_running);
  EXPECT_EQ(voice.mic_presence, "not present");
}

TEST(VoiceReports, LeaveTheDirectionAlone) {
  VoiceStatus voice;
  voice.direction_angle = "12";
  voice.direction_low_confidence = true;
  read_voice_reports("live_processing: running\n", "", voice);
  EXPECT_EQ(voice.direction_angle, "12");
  EXPECT_TRUE(voice.direction_low_confidence);
}

TEST(VoiceEvent, SetsTheDirectionAlone) {
  VoiceStatus voice;
  voice.live_processing = "running";
  read_voice_event(R"({"direction_angle_degrees": -32.5, "direction_confidence": 0.81,)"
                   R"( "direction_low_confidence": true})",
                   voice);
  EXPECT_EQ(voice.direction_angle, "-32.5");
  EXPECT_EQ(voice.direction_confidence, "0.81");
  EXPECT_TRUE(voice.direction_low_confidence);
  EXPECT_EQ(voice.live_processing, "running");
}

TEST(VoiceEvent, TakesTheFirstKeyThatANumberFollows) {
  VoiceStatus voice;
  read_voice_event(R"("direction_angle_degrees": null, "direction_angle_degrees": 12)", voice);
  EXPECT_EQ(voice.direction_angle, "12");
}

TEST(VoiceEvent, WithoutItsKeysIsUnknown) {
  VoiceStatus voice;
  voice.direction_angle = "12";
  voice.direction_low_confidence = true;
  read_voice_event("{}", voice);
  EXPECT_EQ(voice.direction_angle, "unknown");
  EXPECT_EQ(voice.direction_confidence, "unknown");
  EXPECT_FALSE(voice.direction_low_confidence);
}

}  // namespace
}  // namespace halcyra
