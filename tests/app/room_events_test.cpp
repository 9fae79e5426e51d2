#include "app/room_events.hpp"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/run_state/runtime_status.hpp"
#include "tests/support/event_messages.hpp"

namespace halcyra {
namespace {

using Messages = std::vector<std::string>;

// A room whose mode and voice a run that is under way has already logged.
RoomAwareness quiet_room(std::int32_t people) {
  RoomAwareness room;
  room.people = people;
  return room;
}

// What a turn logs, oldest first.
Messages logged(const RoomAwareness& room, RoomEventMemory& memory) {
  RuntimeStatus status;
  status.room = room;
  log_room_events(status, memory);
  return event_messages(status);
}

RoomEventMemory memory_of(std::int32_t people) {
  RoomEventMemory memory;
  memory.people = people;
  memory.view_mode = "scan";
  return memory;
}

Messages logged_people(std::int32_t previous, std::int32_t people) {
  RoomEventMemory memory = memory_of(previous);
  return logged(quiet_room(people), memory);
}

TEST(RoomEventMemory, StartsBeforeTheFirstTurn) {
  const RoomEventMemory memory;
  EXPECT_EQ(memory.people, -1);
  EXPECT_FALSE(memory.owner_visible);
  EXPECT_EQ(memory.view_mode, "");
  EXPECT_EQ(memory.voice_match, "");
}

TEST(LogRoomEvents, SaysThatNobodyIsVisible) {
  EXPECT_EQ(logged_people(-1, 0), Messages{"No person visible"});
  EXPECT_EQ(logged_people(1, 0), Messages{"No person visible"});
  EXPECT_EQ(logged_people(3, 0), Messages{"No person visible"});
}

TEST(LogRoomEvents, CountsPeopleWhoAppear) {
  EXPECT_EQ(logged_people(-1, 2), Messages{"Person appeared: 2"});
  EXPECT_EQ(logged_people(0, 1), Messages{"Person appeared: 1"});
  EXPECT_EQ(logged_people(0, 12), Messages{"Person appeared: 12"});
}

TEST(LogRoomEvents, SaysThatSomebodyLeftOrJoined) {
  EXPECT_EQ(logged_people(2, 1), Messages{"Person disappeared"});
  EXPECT_EQ(logged_people(5, 2), Messages{"Person disappeared"});
  EXPECT_EQ(logged_people(1, 2), Messages{"Multiple people visible"});
  EXPECT_EQ(logged_people(2, 5), Messages{"Multiple people visible"});
}

TEST(LogRoomEvents, SaysNothingWhileTheCountStays) {
  for (const std::int32_t people : {0, 1, 2, 7}) {
    EXPECT_EQ(logged_people(people, people), Messages{});
  }
}

TEST(LogRoomEvents, FollowsTheCountFromTurnToTurn) {
  RoomEventMemory memory = memory_of(-1);
  EXPECT_EQ(logged(quiet_room(1), memory), Messages{"Person appeared: 1"});
  EXPECT_EQ(logged(quiet_room(2), memory), Messages{"Multiple people visible"});
  EXPECT_EQ(logged(quiet_room(2), memory), Messages{});
  EXPECT_EQ(logged(quiet_room(1), memory), Messages{"Person disappeared"});
  EXPECT_EQ(logged(quiet_room(0), memory), Messages{"No person visible"});
  EXPECT_EQ(logged(quiet_room(3), memory), Messages{"Person appeared: 3"});
}

RoomAwareness room_with_owner(std::int32_t people) {
  RoomAwareness room = quiet_room(people);
  room.owner_visible = true;
  room.unknown_people = people - 1;
  return room;
}

RoomAwareness room_of_unknown(std::int32_t people, std::int32_t unknown) {
  RoomAwareness room = quiet_room(people);
  room.unknown_people = unknown;
  return room;
}

TEST(LogRoomEvents, SaysOnceThatTheOwnerIsThere) {
  RoomEventMemory memory = memory_of(1);
  EXPECT_EQ(logged(room_with_owner(1), memory), Messages{"Dorran visible"});
  EXPECT_EQ(logged(room_with_owner(1), memory), Messages{});
  EXPECT_EQ(logged(quiet_room(1), memory), Messages{});
  EXPECT_EQ(logged(room_with_owner(1), memory), Messages{"Dorran visible"});
}

TEST(LogRoomEvents, SaysOnEveryTurnThatOnlyUnknownPeopleAreThere) {
  RoomEventMemory memory = memory_of(1);
  for (int turn = 0; turn < 3; ++turn) {
    EXPECT_EQ(logged(room_of_unknown(1, 1), memory), Messages{"Unknown person visible"});
  }
  memory = memory_of(2);
  EXPECT_EQ(logged(room_of_unknown(2, 2), memory), Messages{"Unknown person visible"});
  EXPECT_EQ(logged(room_of_unknown(2, 3), memory), Messages{"Unknown person visible"});
}

TEST(LogRoomEvents, DoesNotCallTheRoomUnknownOtherwise) {
  RoomEventMemory memory = memory_of(2);
  EXPECT_EQ(logged(room_of_unknown(2, 1), memory), Messages{});
  memory = memory_of(0);
  EXPECT_EQ(logged(room_of_unknown(0, 0), memory), Messages{});
  memory = memory_of(1);
  memory.owner_visible = true;
  RoomAwareness owner_and_count = room_with_owner(1);
  owner_and_count.unknown_people = 1;
  EXPECT_EQ(logged(owner_and_count, memory), Messages{});
}

TEST(LogRoomEvents, SaysThatTheUnknownStayWhenTheOwnerLeaves) {
  RoomEventMemory memory = memory_of(1);
  EXPECT_EQ(logged(room_with_owner(1), memory), Messages{"Dorran visible"});
  EXPECT_EQ(logged(room_of_unknown(1, 1), memory), Messages{"Unknown person visible"});
  EXPECT_EQ(logged(room_with_owner(1), memory), Messages{"Dorran visible"});
}

RoomAwareness room_in_mode(const std::string& mode) {
  RoomAwareness room = quiet_room(0);
  room.view_mode = mode;
  room.target = "Person 4";
  return room;
}

Messages logged_mode(const std::string& previous, const std::string& mode) {
  RoomEventMemory memory = memory_of(0);
  memory.view_mode = previous;
  return logged(room_in_mode(mode), memory);
}

TEST(LogRoomEvents, NamesTheAutomaticModes) {
  for (const std::string previous : {"", "rgb", "depth"}) {
    EXPECT_EQ(logged_mode(previous, "follow"), Messages{"Follow mode active: Person 4"});
    EXPECT_EQ(logged_mode(previous, "room_overview"), Messages{"Room overview active"});
    EXPECT_EQ(logged_mode(previous, "scan"), Messages{"Wide room scan active"});
  }
}

TEST(LogRoomEvents, DoesNotNameTheOperatorsViews) {
  for (const std::string mode : {"rgb", "ir", "depth", "skeletal", "combo", "", "other"}) {
    EXPECT_EQ(logged_mode("scan", mode), Messages{}) << mode;
  }
}

TEST(LogRoomEvents, NamesAModeAgainAfterAnUnnamedOne) {
  RoomEventMemory memory = memory_of(0);
  memory.view_mode = "follow";
  EXPECT_EQ(logged(room_in_mode("follow"), memory), Messages{});
  EXPECT_EQ(logged(room_in_mode("rgb"), memory), Messages{});
  EXPECT_EQ(memory.view_mode, "rgb");
  EXPECT_EQ(logged(room_in_mode("follow"), memory), Messages{"Follow mode active: Person 4"});
}

TEST(LogRoomEvents, DoesNotFollowTheTargetWhileTheModeStays) {
  RoomEventMemory memory = memory_of(0);
  EXPECT_EQ(logged(room_in_mode("follow"), memory), Messages{"Follow mode active: Person 4"});
  RoomAwareness other_target = room_in_mode("follow");
  other_target.target = "Dorran";
  EXPECT_EQ(logged(other_target, memory), Messages{});
}

RoomAwareness room_with_voice(const std::string& sentence) {
  RoomAwareness room = quiet_room(0);
  room.voice_match = sentence;
  return room;
}

TEST(LogRoomEvents, LogsANewVoiceSentenceAsItIs) {
  RoomEventMemory memory = memory_of(0);
  EXPECT_EQ(logged(room_with_voice("low confidence left"), memory),
            Messages{"low confidence left"});
  EXPECT_EQ(logged(room_with_voice("low confidence left"), memory), Messages{});
  EXPECT_EQ(logged(room_with_voice(" Any  sentence "), memory), Messages{" Any  sentence "});
  EXPECT_EQ(logged(room_with_voice("low confidence left"), memory),
            Messages{"low confidence left"});
}

TEST(LogRoomEvents, NeitherLogsNorRemembersThatThereIsNoVoice) {
  RoomEventMemory memory = memory_of(0);
  EXPECT_EQ(logged(room_with_voice("unmatched voice left"), memory),
            Messages{"unmatched voice left"});
  for (const std::string silence : {"no voice direction", "there is no voice", "no voice"}) {
    EXPECT_EQ(logged(room_with_voice(silence), memory), Messages{});
    EXPECT_EQ(memory.voice_match, "unmatched voice left");
  }
  EXPECT_EQ(logged(room_with_voice("unmatched voice left"), memory), Messages{});
  EXPECT_EQ(logged(room_with_voice("No voice"), memory), Messages{"No voice"});
}

TEST(LogRoomEvents, LogsPersonThenOwnerThenModeThenVoice) {
  RoomAwareness room = room_with_owner(1);
  room.view_mode = "follow";
  room.target = "Dorran";
  room.voice_match = "voice direction matched Dorran";
  RoomEventMemory memory;
  EXPECT_EQ(logged(room, memory),
            (Messages{"Person appeared: 1", "Dorran visible", "Follow mode active: Dorran",
                      "voice direction matched Dorran"}));
  room = room_of_unknown(2, 2);
  room.view_mode = "room_overview";
  room.voice_match = "ambiguous speaker left";
  EXPECT_EQ(logged(room, memory), (Messages{"Multiple people visible", "Unknown person visible",
                                            "Room overview active", "ambiguous speaker left"}));
}

TEST(LogRoomEvents, StartsAnEmptyRunWithNobodyAndTheWideScan) {
  RoomEventMemory memory;
  EXPECT_EQ(logged(RoomAwareness(), memory),
            (Messages{"No person visible", "Wide room scan active"}));
}

}  // namespace
}  // namespace halcyra
