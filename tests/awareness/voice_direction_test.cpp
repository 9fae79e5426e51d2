#include "awareness/voice_direction.hpp"

#include <cmath>
#include <string>

#include <gtest/gtest.h>

namespace halcyra {
namespace {

VoiceDirection direction_of(const std::string& angle, const std::string& confidence,
                            bool low_confidence = false) {
  VoiceStatus voice;
  voice.direction_angle = angle;
  voice.direction_confidence = confidence;
  voice.direction_low_confidence = low_confidence;
  return voice_direction(voice);
}

TEST(VoiceDirection, HasTheAngleThatTheTextStartsWith) {
  for (const std::string text : {"-32.5", " -32.5 degrees", "-32.5.7"}) {
    EXPECT_EQ(direction_of(text, "0.9").angle, -32.5) << text;
    EXPECT_TRUE(direction_of(text, "0.9").has_angle) << text;
  }
  EXPECT_TRUE(direction_of("0", "0.9").has_angle);
  EXPECT_TRUE(direction_of("1.7976931348623157e308", "0.9").has_angle);
}

TEST(VoiceDirection, HasNoAngleWhereTheTextIsNoFiniteNumber) {
  for (const std::string text : {"unknown", "", "-", "nan", "inf", "-inf", "1e999"}) {
    EXPECT_FALSE(direction_of(text, "0.9").has_angle) << text;
    EXPECT_FALSE(std::isfinite(direction_of(text, "0.9").angle)) << text;
  }
}

TEST(VoiceDirection, IsTrustedFromAConfidenceOf0Point45On) {
  for (const std::string text : {"0.45", "0.4500001", "0.9", "1", "17", "0.45 or so"}) {
    EXPECT_TRUE(direction_of("5", text).trusted) << text;
  }
  for (const std::string text : {"0.449", "0.4499999999999999", "0", "-0.9", "-1"}) {
    EXPECT_FALSE(direction_of("5", text).trusted) << text;
  }
}

TEST(VoiceDirection, IsNotTrustedWhereTheConfidenceIsNoFiniteNumber) {
  for (const std::string text : {"unknown", "", ".", "nan", "inf", "-inf", "1e999"}) {
    EXPECT_FALSE(direction_of("5", text).trusted) << text;
  }
}

TEST(VoiceDirection, IsNotTrustedWhenFlaggedLow) {
  EXPECT_FALSE(direction_of("5", "0.9", true).trusted);
  EXPECT_TRUE(direction_of("5", "0.9", true).has_angle);
}

TEST(VoiceDirection, JudgesTheConfidenceWithoutAnAngle) {
  EXPECT_TRUE(direction_of("unknown", "0.9").trusted);
  EXPECT_FALSE(direction_of("unknown", "unknown").trusted);
}

}  // namespace
}  // namespace halcyra
