// The first turns of a process: the wide scan stands, and a person is followed after a while.
#include <chrono>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "app/runtime_status.hpp"
#include "awareness/update_room_awareness.hpp"
#include "tests/awareness/faces.hpp"

namespace halcyra {
namespace {

using Clock = std::chrono::steady_clock;

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
  update_room_awareness(status, {}, options, 0);
  expect_empty_room(status.room);

  const Clock::time_point came = Clock::now();
  update_room_awareness(status, {face(1)}, options, 1920);
  expect_held_back(status.room);
  while (status.room.view_mode == "scan" && Clock::now() - came < std::chrono::seconds(60)) {
    expect_held_back(status.room);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    update_room_awareness(status, {face(1)}, options, 1920);
  }
  EXPECT_GE(Clock::now() - came, std::chrono::milliseconds(1250));
  EXPECT_EQ(status.room.view_mode, "follow");
  EXPECT_EQ(status.room.target, "Person 1");
  EXPECT_EQ(status.room.reason, "following face center because skeleton is unavailable");
}

}  // namespace
}  // namespace halcyra
