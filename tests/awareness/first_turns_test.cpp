// The first turns of a run: the wide scan stands, and a person is followed after a while.
#include <chrono>
#include <string>

#include <gtest/gtest.h>

#include "app/run_state/runtime_status.hpp"
#include "awareness/update_room_awareness.hpp"
#include "tests/awareness/faces.hpp"

namespace halcyra {
namespace {

using std::chrono::milliseconds;

constexpr std::chrono::steady_clock::time_point kStart{std::chrono::hours(100)};

void expect_empty_room(const RoomAwareness& room) {
  EXPECT_EQ(room.view_mode, "scan");
  EXPECT_EQ(room.target, "none");
  EXPECT_EQ(room.fallback, "degraded");
  EXPECT_EQ(room.reason, "no person detected; wide room scan active");
  EXPECT_EQ(room.voice_match, "no voice direction");
}

void expect_held_back(const RoomAwareness& room) {
  EXPECT_EQ(room.view_mode, "scan");
  EXPECT_EQ(room.target, "Person 1");
  EXPECT_EQ(room.reason, "tracking uncertain; holding scan before switching to follow");
}

TEST(FirstTurns, ScanTheRoomAndFollowAPersonWhoStays) {
  RuntimeStatus status;
  const Options options;
  ModeHoldBack hold;
  update_room_awareness(status, {}, options, 0, hold, kStart);
  expect_empty_room(status.room);
  for (const int wait : {0, 1, 700, 1249}) {
    update_room_awareness(status, {face(1)}, options, 1920, hold, kStart + milliseconds(wait));
    expect_held_back(status.room);
  }
  update_room_awareness(status, {face(1)}, options, 1920, hold, kStart + milliseconds(1250));
  EXPECT_EQ(status.room.view_mode, "follow");
  EXPECT_EQ(status.room.target, "Person 1");
  EXPECT_EQ(status.room.reason, "following face center because skeleton is unavailable");
}

}  // namespace
}  // namespace halcyra
