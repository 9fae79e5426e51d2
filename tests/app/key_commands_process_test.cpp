// The keys that talk to the services, with a fake control script and a fake systemctl.
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/key_commands.hpp"
#include "app/run_state/runtime_status.hpp"
#include "tests/app/same_options.hpp"
#include "tests/support/environment_variable.hpp"
#include "tests/support/event_messages.hpp"
#include "tests/support/fake_commands.hpp"
#include "tests/support/working_folder.hpp"

namespace halcyra {
namespace {

using Texts = std::vector<std::string>;

class KeyCommandsProcess : public testing::Test {
 protected:
  KeyCommandsProcess() {
    commands_.answer(script(), "status",
                     "live_processing: running\ndefault_source: sonmere_beamformed_mic\n");
    commands_.answer(script(), "persistence-status", "systemd_user_active: active\n");
    commands_.answer(tools() / "systemctl", "is-active corvane.service", "active\n");
  }

  std::filesystem::path script() const { return folder_.path() / "install/sonmerectl"; }
  std::filesystem::path tools() const { return folder_.path() / "tools"; }

  // Presses the key; it must go on, log this one event and leave the options alone.
  void press(char key, const std::string& event) {
    SCOPED_TRACE(key);
    status_ = RuntimeStatus();
    Options options;
    EXPECT_TRUE(handle_key(key, options, status_));
    EXPECT_EQ(event_messages(status_), Texts{event});
    expect_same_options(options, Options());
  }

  WorkingFolder folder_;
  EnvironmentVariable home_{"HOME", folder_.path().string()};
  EnvironmentVariable path_{"PATH", tools().string()};
  FakeCommands commands_;
  RuntimeStatus status_;
};

struct DrivingKey {
  const char* keys;
  const char* verb;
  const char* event;
};

TEST_F(KeyCommandsProcess, DriveTheVoiceServiceAndThenAskIt) {
  Texts expected;
  for (const DrivingKey& row :
       {DrivingKey{"kK", "start", "Sonmere start requested"},
        DrivingKey{"tT", "stop", "Sonmere stop requested"},
        DrivingKey{"xX", "make-default", "Default mic change requested"},
        DrivingKey{"zZ", "restore-default", "Default mic restore requested"}}) {
    for (const char key : std::string(row.keys)) {
      press(key, row.event);
      expected.push_back(std::string("sonmerectl ") + row.verb);
      expected.push_back("sonmerectl status");
      expected.push_back("sonmerectl persistence-status");
      EXPECT_EQ(commands_.calls(), expected);
      EXPECT_EQ(status_.voice.live_processing, "running");
      EXPECT_EQ(status_.voice.systemd_user_active, "active");
      EXPECT_EQ(status_.corvane.warning, "not evaluated");
    }
  }
}

TEST_F(KeyCommandsProcess, AskBothServices) {
  Texts expected;
  for (const char key : {'v', 'V'}) {
    press(key, "Status refreshed");
    for (const char* call :
         {"sonmerectl status", "sonmerectl persistence-status",
          "systemctl --user is-active corvane.service", "systemctl is-active corvane.service"}) {
      expected.push_back(call);
    }
    EXPECT_EQ(commands_.calls(), expected);
    EXPECT_EQ(status_.voice.live_processing, "running");
    EXPECT_EQ(status_.corvane.user_state, "unknown");
    EXPECT_EQ(status_.corvane.system_state, "active");
  }
}

// The assistant is judged by the microphone as it was found a moment before.
TEST_F(KeyCommandsProcess, AskTheVoiceServiceFirst) {
  press('v', "Status refreshed");
  EXPECT_EQ(status_.corvane.mic_routing, "likely yes");
  EXPECT_EQ(status_.corvane.warning, "no active warning");
}

TEST_F(KeyCommandsProcess, SayTheSameWithoutTheServices) {
  std::filesystem::remove_all(folder_.path() / "install");
  std::filesystem::remove_all(tools());
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  press('k', "Sonmere start requested");
  press('v', "Status refreshed");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(status_.voice.live_processing, "unknown");
  EXPECT_EQ(status_.corvane.user_state, "unknown");
  EXPECT_EQ(status_.corvane.warning, "Sonmere Beamformed Mic is not present");
}

}  // namespace
}  // namespace halcyra
