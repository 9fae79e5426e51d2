// Every key that does something, pressed for real.
#include <algorithm>
#include <memory>

#include <gtest/gtest.h>

#include "tests/e2e/desktop_run.hpp"
#include "tests/e2e/exit_summary_line.hpp"
#include "tests/e2e/scenes.hpp"

namespace halcyra {
namespace {

using Messages = std::vector<std::string>;

struct KeyCase {
  std::string keysym;
  std::string message;
  std::vector<std::string> calls;
};

const std::vector<std::string> kVoiceCalls = {"sonmerectl status", "sonmerectl persistence-status"};

// The calls of a voice command: the verb, then a refresh of the voice status only.
std::vector<std::string> voice_command(const std::string& verb) {
  return {"sonmerectl " + verb, kVoiceCalls[0], kVoiceCalls[1]};
}

std::vector<std::string> whole_refresh() {
  return {kVoiceCalls[0], kVoiceCalls[1], "systemctl --user is-active corvane.service",
          "systemctl is-active corvane.service"};
}

// The room logs these by itself after a view key, at once or after the hold-back.
bool is_mode_message(const std::string& message) {
  return message == "Wide room scan active" || message == "Room overview active" ||
         message == "Follow mode active: none";
}

// Puts the messages above the newest `marker` into `since`, without those of the room. False: the
// marker is not shown.
bool messages_since(const Messages& shown, const std::string& marker, Messages& since) {
  const auto end = std::find(shown.begin(), shown.end(), marker);
  since.clear();
  std::copy_if(shown.begin(), end, std::back_inserter(since),
               [](const std::string& message) { return !is_mode_message(message); });
  return end != shown.end();
}

class KeyCommands : public ::testing::Test {
 protected:
  KeyCommands() : run_(stage_, {in_readable_window({"--no-camera"})}) {}

  void SetUp() override { ASSERT_TRUE(run_.wait_for_message("Wide room scan active")); }

  // True once `expected`, newest first, is all that was logged since the newest `marker`.
  bool logged_since(const std::string& marker, const Messages& expected) {
    return run_.wait_for_messages([&](const Messages& shown) {
      return messages_since(shown, marker, shown_since_) && shown_since_ == expected;
    });
  }

  // Logs a message that the next key cannot log, and returns it. It alternates, so that it differs
  // from the marker before.
  std::string mark(const std::string& next_keysym) {
    const bool microphone_next = next_keysym == "m" || next_keysym == "M";
    std::string marker = "Current view: RGB";
    if (microphone_next) {
      run_.desktop().press("1");
    } else {
      microphone_ = !microphone_;
      marker = microphone_ ? "Mic HUD enabled" : "Mic HUD disabled";
      run_.desktop().press("m");
    }
    EXPECT_TRUE(logged_since(marker, {})) << marker << ::testing::PrintToString(shown_since_);
    return marker;
  }

  void expect_key(const KeyCase& key) {
    SCOPED_TRACE("key " + key.keysym);
    const std::string marker = mark(key.keysym);
    const std::size_t calls_before = stage_.calls().size();
    run_.desktop().press(key.keysym);
    EXPECT_TRUE(logged_since(marker, {key.message})) << ::testing::PrintToString(shown_since_);
    const std::vector<std::string> calls = stage_.calls();
    EXPECT_EQ(std::vector<std::string>(calls.begin() + static_cast<std::ptrdiff_t>(calls_before),
                                       calls.end()),
              key.calls);
  }

  void expect_keys(const std::vector<KeyCase>& keys) {
    for (const KeyCase& key : keys) {
      expect_key(key);
      if (HasFailure()) return;
    }
  }

  Stage stage_;
  DesktopRun run_;
  bool microphone_ = true;
  Messages shown_since_;
};

TEST_F(KeyCommands, ViewKeysInBothLetterCasesLogTheirView) {
  expect_keys({{"1", "Current view: RGB", {}},
               {"2", "Current view: IR", {}},
               {"i", "Current view: IR", {}},
               {"I", "Current view: IR", {}},
               {"3", "Current view: DEPTH", {}},
               {"d", "Current view: DEPTH", {}},
               {"D", "Current view: DEPTH", {}},
               {"4", "Current view: SKELETAL", {}},
               {"5", "Current view: COMBO", {}},
               {"a", "Current view: COMBO", {}},
               {"A", "Current view: COMBO", {}},
               {"6", "Current view: ROOM OVERVIEW", {}},
               {"o", "Current view: ROOM OVERVIEW", {}},
               {"O", "Current view: ROOM OVERVIEW", {}},
               {"7", "Current view: FOLLOW", {}},
               {"f", "Current view: FOLLOW", {}},
               {"F", "Current view: FOLLOW", {}}});
}

TEST_F(KeyCommands, ServiceKeysCallTheServicesInOrder) {
  expect_keys({{"v", "Status refreshed", whole_refresh()},
               {"V", "Status refreshed", whole_refresh()},
               {"k", "Sonmere start requested", voice_command("start")},
               {"K", "Sonmere start requested", voice_command("start")},
               {"t", "Sonmere stop requested", voice_command("stop")},
               {"T", "Sonmere stop requested", voice_command("stop")},
               {"x", "Default mic change requested", voice_command("make-default")},
               {"X", "Default mic change requested", voice_command("make-default")},
               {"z", "Default mic restore requested", voice_command("restore-default")},
               {"Z", "Default mic restore requested", voice_command("restore-default")}});
}

TEST_F(KeyCommands, DebugKeysSayTheNewState) {
  expect_keys({{"b", "Debug boxes/detail enabled", {}},
               {"B", "Debug boxes/detail disabled", {}},
               {"b", "Debug boxes/detail enabled", {}}});
}

TEST_F(KeyCommands, MicrophoneKeysSayTheNewState) {
  expect_keys(
      {{"m", "Mic HUD disabled", {}}, {"M", "Mic HUD enabled", {}}, {"m", "Mic HUD disabled", {}}});
}

TEST_F(KeyCommands, EveryViewKeySwitchesDebugOff) {
  for (const std::string view_key : {"1", "2", "3", "4", "5", "6", "7"}) {
    SCOPED_TRACE("view key " + view_key);
    expect_key({"b", "Debug boxes/detail enabled", {}});
    const std::string marker = mark("1");
    run_.desktop().press(view_key);
    // Only the view is logged; the next message of b tells whether debug is off.
    ASSERT_TRUE(run_.wait_for_messages([&](const Messages& shown) {
      return messages_since(shown, marker, shown_since_) && shown_since_.size() == 1 &&
             shown_since_[0].rfind("Current view: ", 0) == 0;
    })) << ::testing::PrintToString(shown_since_);
  }
  expect_key({"b", "Debug boxes/detail enabled", {}});
}

// Without a window manager the window swallows the first Tab to move its focus, so Tab is pressed
// until one arrives.
TEST_F(KeyCommands, TabLogsTheTarget) {
  const std::string marker = mark("Tab");
  EXPECT_TRUE(run_.wait_for_messages([&](const Messages& shown) {
    const bool logged = messages_since(shown, marker, shown_since_) && !shown_since_.empty();
    if (!logged) run_.desktop().press("Tab");
    return logged;
  }));
  EXPECT_EQ(shown_since_[0], "Target cycle requested: none");
  EXPECT_EQ(stage_.calls(),
            (std::vector<std::string>{"xrandr --current", kVoiceCalls[0], kVoiceCalls[1],
                                      whole_refresh()[2], whole_refresh()[3]}));
}

TEST_F(KeyCommands, MicrophoneStripLeavesAndReturnsToThePicture) {
  run_.desktop().press("m");
  ExpectedDashboard scene = camera_less_scene("combo");
  scene.options.mic_hud = false;
  log_message(scene, "Mic HUD disabled");
  EXPECT_EQ(run_.wait_for(scene), "");
  run_.desktop().press("m");
  scene.options.mic_hud = true;
  log_message(scene, "Mic HUD enabled");
  EXPECT_EQ(run_.wait_for(scene), "");
}

class QuitKeys : public ::testing::TestWithParam<const char*> {};

TEST_P(QuitKeys, EndTheRunWithItsSummary) {
  Stage stage;
  DesktopRun run(stage, {in_readable_window({"--no-camera"})});
  ASSERT_TRUE(run.wait_for_message("Wide room scan active"));
  run.desktop().press(GetParam());
  const std::optional<ProcessEnd> end = run.program().wait_for_end();
  ASSERT_TRUE(end);
  EXPECT_EQ(end->exit_status, 0);
  EXPECT_EQ(summary_values(run.program().output()).at("frames"), "0");
  EXPECT_EQ(summary_values(run.program().output()).at("fps"), "0");
}

INSTANTIATE_TEST_SUITE_P(All, QuitKeys, ::testing::Values("q", "Q", "Escape"));

TEST(ViewKeys, ChangeTheViewOfTheSummary) {
  Stage stage;
  DesktopRun run(stage, {in_readable_window({"--no-camera"})});
  ASSERT_TRUE(run.wait_for_message("Wide room scan active"));
  run.desktop().press("o");
  ASSERT_TRUE(run.wait_for_message("Current view: ROOM OVERVIEW"));
  ASSERT_TRUE(run.quit());
  EXPECT_EQ(summary_values(run.program().output()).at("current_view"), "room_overview");
}

}  // namespace
}  // namespace halcyra
