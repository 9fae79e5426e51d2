#include "virtual_kinect/room/obstacle.hpp"

#include <vector>

#include <gtest/gtest.h>

namespace halcyra::virtual_kinect::room {
namespace {

const Vec3 kUp{0, -1, 0};

TEST(OpennessAmong, IsOneInTheOpen) {
  EXPECT_EQ(openness_among({}, {0, 0, 1000}, kUp), 1.0F);
  EXPECT_EQ(openness_among({{{0, 500, 1000}, {10, 10, 10}}}, {0, 0, 1000}, kUp), 1.0F);
}

TEST(OpennessAmong, FallsTowardsAnObstacle) {
  const std::vector<Obstacle> wall = {{{1000, 0, 1000}, {100, 1000, 1000}}};
  float before = 1.0F;
  for (const float x : {700.0F, 800.0F, 860.0F, 890.0F}) {
    const float openness = openness_among(wall, {x, 0, 1000}, kUp);
    EXPECT_LT(openness, before) << x;
    before = openness;
  }
}

TEST(OpennessAmong, NeverFallsBelowAFifth) {
  const std::vector<Obstacle> around = {{{0, 0, 1000}, {1000, 1000, 1000}}};
  EXPECT_FLOAT_EQ(openness_among(around, {0, 0, 1000}, kUp), 0.2F);
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
