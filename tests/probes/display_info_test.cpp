#include "probes/display_info.hpp"

#include <gtest/gtest.h>

namespace halcyra {
namespace {

TEST(DisplayInfo, StartsAsTheFallback) {
  const DisplayInfo display;
  EXPECT_EQ(display.width, 1280);
  EXPECT_EQ(display.height, 720);
  EXPECT_EQ(display.source, "fallback");
}

}  // namespace
}  // namespace halcyra
