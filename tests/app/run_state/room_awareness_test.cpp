#include "app/run_state/room_awareness.hpp"

#include <gtest/gtest.h>

namespace halcyra {
namespace {

TEST(RoomAwareness, StartsWithNobody) {
  const RoomAwareness room;
  EXPECT_EQ(room.people, 0);
  EXPECT_EQ(room.faces, 0);
  EXPECT_EQ(room.skeletons, 0);
  EXPECT_FALSE(room.owner_visible);
  EXPECT_EQ(room.unknown_people, 0);
  EXPECT_EQ(room.target, "none");
  EXPECT_EQ(room.view_mode, "scan");
  EXPECT_EQ(room.fallback, "face");
  EXPECT_EQ(room.reason, "no person detected");
  EXPECT_EQ(room.voice_match, "no voice direction");
}

}  // namespace
}  // namespace halcyra
