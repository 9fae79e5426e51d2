#include "app/run_state/corvane_status.hpp"

#include <gtest/gtest.h>

namespace halcyra {
namespace {

TEST(CorvaneStatus, StartsUnknown) {
  const CorvaneStatus corvane;
  EXPECT_EQ(corvane.user_state, "unknown");
  EXPECT_EQ(corvane.system_state, "unknown");
  EXPECT_EQ(corvane.mic_routing, "unknown");
  EXPECT_EQ(corvane.warning, "not evaluated");
}

}  // namespace
}  // namespace halcyra
