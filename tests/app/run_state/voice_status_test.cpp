#include "app/run_state/voice_status.hpp"

#include <gtest/gtest.h>

namespace halcyra {
namespace {

TEST(VoiceStatus, StartsUnknown) {
  const VoiceStatus voice;
  EXPECT_EQ(voice.live_processing, "unknown");
  EXPECT_EQ(voice.default_source, "unknown");
  EXPECT_EQ(voice.mic_presence, "unknown");
  EXPECT_EQ(voice.systemd_user_active, "unknown");
  EXPECT_EQ(voice.event_path, "unknown");
  EXPECT_EQ(voice.wav_path, "unknown");
  EXPECT_EQ(voice.direction_angle, "unknown");
  EXPECT_EQ(voice.direction_confidence, "unknown");
  EXPECT_FALSE(voice.direction_low_confidence);
  EXPECT_FALSE(voice.live_running);
}

}  // namespace
}  // namespace halcyra
