#include "virtual_kinect/room/pose.hpp"

#include <gtest/gtest.h>

namespace halcyra::virtual_kinect::room {
namespace {

constexpr Vec3 kFacing{0, 0, -1};
constexpr Vec3 kUpper{0, -1, 0};

void expect_near(const Vec3& actual, const Vec3& expected) {
  EXPECT_LT(length(actual - expected), 1e-5F) << actual.x << ", " << actual.y << ", " << actual.z;
}

TEST(Pose, TurnsTheWayItSays) {
  expect_near(turned_about_y(90).turn(kFacing), {1, 0, 0});  // to the picture's right
  expect_near(turned_about_x(90).turn(kFacing), {0, 1, 0});  // down
  expect_near(turned_about_z(90).turn(kUpper), {1, 0, 0});   // the upper end to the right
}

TEST(Pose, AppliesTheInnerOneFirst) {
  const Pose pose = shifted({10, 0, 0}) * turned_about_y(90);
  expect_near(pose.place(kFacing), {11, 0, 0});
  expect_near((turned_about_y(90) * shifted({10, 0, 0})).place({}), {0, 0, 10});
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
