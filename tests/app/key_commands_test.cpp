#include "app/key_commands.hpp"

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "app/run_state/runtime_status.hpp"
#include "tests/app/same_options.hpp"
#include "tests/support/event_messages.hpp"

namespace halcyra {
namespace {

using Messages = std::vector<std::string>;

constexpr int kTab = 9;
constexpr int kEscape = 27;

// Options in which every command shows.
Options busy_options() {
  Options options;
  options.view = "another";
  options.overlay_mode = "auto";
  options.debug = true;
  options.mic_hud = false;
  return options;
}

// Presses a key that goes on; gives the options afterwards and checks what was logged.
Options pressed(int key, const Options& before, const Messages& expected) {
  Options options = before;
  RuntimeStatus status;
  status.room.target = "Person 3";
  EXPECT_TRUE(handle_key(key, options, status)) << key;
  EXPECT_EQ(event_messages(status), expected) << key;
  return options;
}

struct ViewKeys {
  const char* keys;
  const char* view;
  const char* label;
};

TEST(HandleKey, SelectsAView) {
  for (const ViewKeys& row :
       {ViewKeys{"1", "rgb", "RGB"}, ViewKeys{"2iI", "ir", "IR"}, ViewKeys{"3dD", "depth", "DEPTH"},
        ViewKeys{"4", "skeletal", "SKELETAL"}, ViewKeys{"5aA", "combo", "COMBO"},
        ViewKeys{"6oO", "room_overview", "ROOM OVERVIEW"}, ViewKeys{"7fF", "follow", "FOLLOW"}}) {
    Options expected = busy_options();
    expected.view = row.view;
    expected.overlay_mode = row.view;
    expected.debug = false;
    for (const char key : std::string_view(row.keys)) {
      SCOPED_TRACE(key);
      const std::string event = std::string("Current view: ") + row.label;
      expect_same_options(pressed(key, busy_options(), {event}), expected);
    }
  }
}

TEST(HandleKey, TogglesDebug) {
  Options off = busy_options();
  off.debug = false;
  for (const char key : {'b', 'B'}) {
    expect_same_options(pressed(key, busy_options(), {"Debug boxes/detail disabled"}), off);
    expect_same_options(pressed(key, off, {"Debug boxes/detail enabled"}), busy_options());
  }
}

TEST(HandleKey, TogglesTheMicrophoneHud) {
  Options on = busy_options();
  on.mic_hud = true;
  for (const char key : {'m', 'M'}) {
    expect_same_options(pressed(key, busy_options(), {"Mic HUD enabled"}), on);
    expect_same_options(pressed(key, on, {"Mic HUD disabled"}), busy_options());
  }
}

TEST(HandleKey, OnlyNamesTheTargetOnTab) {
  expect_same_options(pressed(kTab, busy_options(), {"Target cycle requested: Person 3"}),
                      busy_options());
}

TEST(HandleKey, LeavesTheRoomAloneOnTab) {
  Options options;
  RuntimeStatus status;
  ASSERT_TRUE(handle_key(kTab, options, status));
  EXPECT_EQ(event_messages(status), Messages{"Target cycle requested: none"});
  EXPECT_EQ(status.room.target, "none");
  EXPECT_EQ(status.room.view_mode, "scan");
}

TEST(HandleKey, EndsTheRunSilently) {
  for (const int key : {int{'q'}, int{'Q'}, kEscape}) {
    Options options = busy_options();
    RuntimeStatus status;
    EXPECT_FALSE(handle_key(key, options, status)) << key;
    EXPECT_EQ(event_messages(status), Messages{});
    expect_same_options(options, busy_options());
  }
}

bool has_command(int key) {
  if (key == kTab || key == kEscape) return true;
  if (key < '1' || key > 'z') return false;
  return std::string_view("qQ12iI3dD45aA6oO7fFbBmMvVkKtTxXzZ").find(static_cast<char>(key)) !=
         std::string_view::npos;
}

TEST(HandleKey, DoesNothingForOtherCodes) {
  int silent = 0;
  for (int key = -1; key <= 300; ++key) {
    if (has_command(key)) continue;
    SCOPED_TRACE(key);
    expect_same_options(pressed(key, busy_options(), {}), busy_options());
    ++silent;
  }
  EXPECT_EQ(silent, 302 - 35);
}

// A modifier or a key beyond the letters sets bits above the low byte.
TEST(HandleKey, DoesNothingForCodesWithHighBits) {
  const std::string keys = "qQ12iI3dD45aA6oO7fFbBmMvVkKtTxXzZ\t\x1B";
  for (const int high : {0x100, 0x10000, 0x100000, 0x40000, 0xFF00, 0x1000000, 0x40000000}) {
    for (const char key : keys) {
      SCOPED_TRACE(high + key);
      expect_same_options(pressed(high + key, busy_options(), {}), busy_options());
    }
  }
  for (const int code :
       {-2, -256 + 'q', std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    expect_same_options(pressed(code, busy_options(), {}), busy_options());
  }
}

}  // namespace
}  // namespace halcyra
