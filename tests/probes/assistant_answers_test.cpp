#include "probes/assistant_answers.hpp"

#include <string>

#include <gtest/gtest.h>

namespace halcyra {
namespace {

CorvaneStatus judged(const std::string& user_answer, const std::string& system_answer,
                     const std::string& default_source, const std::string& mic_presence) {
  VoiceStatus voice;
  voice.default_source = default_source;
  voice.mic_presence = mic_presence;
  CorvaneStatus corvane;
  read_assistant_answers(user_answer, system_answer, voice, corvane);
  return corvane;
}

TEST(AssistantAnswers, AreKeptTrimmed) {
  const CorvaneStatus corvane = judged(" active\n", "", "unknown", "unknown");
  EXPECT_EQ(corvane.user_state, "active");
  EXPECT_EQ(corvane.system_state, "unknown");
  EXPECT_EQ(judged("", "\n", "", "").system_state, "");
}

TEST(AssistantAnswers, RouteThroughAPresentDefaultMicrophone) {
  EXPECT_EQ(judged("", "", "x sonmere x", "present").mic_routing, "likely yes");
  for (const CorvaneStatus& corvane :
       {judged("", "", "alsa", "present"), judged("", "", "sonmere", "not present")}) {
    EXPECT_EQ(corvane.mic_routing, "not through Sonmere default");
  }
}

TEST(AssistantAnswers, WarnOfAnAssistantThatHearsAnotherMicrophone) {
  const std::string warning = "Corvane active but default mic is not Sonmere";
  EXPECT_EQ(judged("active", "inactive", "alsa", "present").warning, warning);
  EXPECT_EQ(judged("inactive", "active", "alsa", "not present").warning, warning);
  EXPECT_EQ(judged("active", "active", "sonmere", "present").warning, "no active warning");
  EXPECT_EQ(judged("inactive", "inactive", "alsa", "present").warning, "no active warning");
}

TEST(AssistantAnswers, WarnOfAMissingMicrophone) {
  EXPECT_EQ(judged("active", "", "sonmere", "not present").warning,
            "Sonmere Beamformed Mic is not present");
  EXPECT_EQ(judged("inactive", "", "alsa", "unknown").warning,
            "Sonmere Beamformed Mic is not present");
}

}  // namespace
}  // namespace halcyra
