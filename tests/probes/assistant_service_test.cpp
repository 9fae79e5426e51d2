// The assistant's state as a fake systemctl reports it.
#include "probes/assistant_service.hpp"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/run_state/runtime_status.hpp"
#include "tests/support/environment_variable.hpp"
#include "tests/support/fake_commands.hpp"
#include "tests/support/temporary_folder.hpp"

namespace halcyra {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* kLikelyYes = "likely yes";
constexpr const char* kNotThroughSonmere = "not through Sonmere default";
constexpr const char* kWrongMic = "Corvane active but default mic is not Sonmere";
constexpr const char* kNoMic = "Sonmere Beamformed Mic is not present";
constexpr const char* kNoWarning = "no active warning";

class RefreshCorvane : public testing::Test {
 protected:
  void managers_say(const std::string& user, const std::string& system, int exit_status = 0) {
    const std::filesystem::path systemctl = tools_.path() / "systemctl";
    commands_.answer(systemctl, "--user is-active corvane.service", user, exit_status);
    commands_.answer(systemctl, "is-active corvane.service", system, exit_status);
  }

  void microphone(const std::string& default_source, const std::string& presence) {
    status_.voice.default_source = default_source;
    status_.voice.mic_presence = presence;
  }

  const CorvaneStatus& refresh() {
    refresh_corvane(status_);
    return status_.corvane;
  }

  void expect_judgement(const std::string& routing, const std::string& warning) {
    const CorvaneStatus& corvane = refresh();
    EXPECT_EQ(corvane.mic_routing, routing);
    EXPECT_EQ(corvane.warning, warning);
  }

  TemporaryFolder tools_;
  EnvironmentVariable path_{"PATH", tools_.path().string()};
  FakeCommands commands_;
  RuntimeStatus status_;
};

TEST_F(RefreshCorvane, AsksTheUsersManagerThenTheSystems) {
  managers_say("active\n", "inactive\n");
  refresh();
  EXPECT_EQ(commands_.calls(), (Texts{"systemctl --user is-active corvane.service",
                                      "systemctl is-active corvane.service"}));
  EXPECT_EQ(status_.corvane.user_state, "active");
  EXPECT_EQ(status_.corvane.system_state, "inactive");
}

TEST_F(RefreshCorvane, KeepsTheWordWhateverTheExitStatus) {
  managers_say("  failed \r\n", "activating\nmore\n", 3);
  const CorvaneStatus& corvane = refresh();
  EXPECT_EQ(corvane.user_state, "failed");
  EXPECT_EQ(corvane.system_state, "activating\nmore");
}

TEST_F(RefreshCorvane, IsUnknownWithoutAnAnswer) {
  managers_say("", "");
  status_.corvane.user_state = "active";
  status_.corvane.system_state = "active";
  const CorvaneStatus& corvane = refresh();
  EXPECT_EQ(corvane.user_state, "unknown");
  EXPECT_EQ(corvane.system_state, "unknown");
}

TEST_F(RefreshCorvane, IsEmptyWhenTheAnswerIsBlank) {
  managers_say("\n", " \t\r\n");
  const CorvaneStatus& corvane = refresh();
  EXPECT_EQ(corvane.user_state, "");
  EXPECT_EQ(corvane.system_state, "");
}

TEST_F(RefreshCorvane, GoesOnWithoutSystemctl) {
  testing::internal::CaptureStderr();
  expect_judgement(kNotThroughSonmere, kNoMic);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(status_.corvane.user_state, "unknown");
  EXPECT_EQ(status_.corvane.system_state, "unknown");
  EXPECT_TRUE(status_.events.empty());
}

TEST_F(RefreshCorvane, IsContentWhenTheAssistantHearsThroughSonmere) {
  microphone("sonmere_beamformed_mic", "present");
  managers_say("active\n", "inactive\n");
  expect_judgement(kLikelyYes, kNoWarning);
  managers_say("inactive\n", "active\n");
  expect_judgement(kLikelyYes, kNoWarning);
  managers_say("inactive\n", "inactive\n");
  expect_judgement(kLikelyYes, kNoWarning);
}

TEST_F(RefreshCorvane, WarnsOfAnActiveAssistantOnAnotherMicrophone) {
  for (const std::string presence : {"present", "not present", "unknown"}) {
    microphone("alsa_input.laptop", presence);
    managers_say("inactive\n", "active\n");
    expect_judgement(kNotThroughSonmere, kWrongMic);
    managers_say("active\n", "");
    expect_judgement(kNotThroughSonmere, kWrongMic);
  }
}

TEST_F(RefreshCorvane, DoesNotWarnOfTheRoutingOfAnAssistantThatIsNotActive) {
  for (const std::string state : {"inactive\n", "failed\n", "activating\n", "reactive\n",
                                  "Active\n", "active now\n", "", "\n"}) {
    managers_say(state, state);
    microphone("alsa_input.laptop", "present");
    expect_judgement(kNotThroughSonmere, kNoWarning);
    microphone("alsa_input.laptop", "not present");
    expect_judgement(kNotThroughSonmere, kNoMic);
  }
}

TEST_F(RefreshCorvane, WarnsOfAMissingMicrophoneBehindASonmereDefault) {
  for (const std::string state : {"active\n", "inactive\n"}) {
    managers_say(state, "");
    for (const std::string presence : {"not present", "unknown", "Present", "present ", ""}) {
      microphone("sonmere_beamformed_mic", presence);
      expect_judgement(kNotThroughSonmere, kNoMic);
    }
  }
}

TEST_F(RefreshCorvane, KnowsTheSonmereDefaultByItsLowerCaseName) {
  managers_say("active\n", "");
  for (const std::string source : {"sonmere", "alsa.sonmere_x", "xsonmerex"}) {
    microphone(source, "present");
    expect_judgement(kLikelyYes, kNoWarning);
  }
  for (const std::string source :
       {"Sonmere Beamformed Mic", "SONMERE", "son mere", "", "unknown"}) {
    microphone(source, "present");
    expect_judgement(kNotThroughSonmere, kWrongMic);
  }
}

TEST_F(RefreshCorvane, LeavesTheVoiceServiceAlone) {
  managers_say("active\n", "active\n");
  microphone("sonmere", "present");
  refresh();
  EXPECT_EQ(status_.voice.default_source, "sonmere");
  EXPECT_EQ(status_.voice.mic_presence, "present");
  EXPECT_EQ(status_.voice.live_processing, "unknown");
}

}  // namespace
}  // namespace halcyra
