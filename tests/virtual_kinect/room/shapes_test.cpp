#include "virtual_kinect/room/shapes.hpp"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace halcyra::virtual_kinect::room {
namespace {

constexpr float kExact = 0.01F;

void expect_outward(const Surface& surface, const Vec3& inside) {
  for (std::size_t i = 0; i < surface.points.size(); ++i) {
    EXPECT_NEAR(length(surface.normals[i]), 1.0F, kExact);
    EXPECT_GT(dot(surface.normals[i], surface.points[i] - inside), 0.0F) << i;
  }
}

TEST(MakeTube, GoesThroughItsRings) {
  const std::vector<Ring> rings = {
      {{5, -100, 900}, 30, 20}, {{5, 0, 900}, 40, 25}, {{5, 100, 900}, 30, 20}};
  const Surface tube = make_tube(rings, 33, 21);
  const Vec3 front = tube.points[tube.index(16, 10)];
  EXPECT_NEAR(length(front - Vec3{5, 0, 875}), 0.0F, kExact);
  const Vec3 right = tube.points[tube.index(24, 10)];
  EXPECT_NEAR(length(right - Vec3{45, 0, 900}), 0.0F, kExact);
  const Vec3 upper_back = tube.points[tube.index(0, 0)];
  EXPECT_NEAR(length(upper_back - Vec3{5, -100, 920}), 0.0F, kExact);
  EXPECT_NEAR(length(upper_back - tube.points[tube.index(32, 0)]), 0.0F, kExact);
  expect_outward(tube, {5, 0, 900});
}

TEST(MakeSheet, SpansItsSidesAndFacesTheViewer) {
  const Surface sheet = make_sheet({-10, -20, 500}, {30, 0, 0}, {0, 40, 0}, 10.0F);
  EXPECT_NEAR(length(sheet.points.front() - Vec3{-10, -20, 500}), 0.0F, kExact);
  EXPECT_NEAR(length(sheet.points.back() - Vec3{20, 20, 500}), 0.0F, kExact);
  for (const Vec3& normal : sheet.normals) EXPECT_FLOAT_EQ(normal.z, -1.0F);
}

TEST(MakeBox, HasTheFacesThatTheCameraSees) {
  EXPECT_EQ(make_box({-50, -50, 900}, {50, 50, 1000}, 20.0F).size(), 1U);
  const std::vector<Surface> to_the_right = make_box({100, -50, 900}, {200, 50, 1000}, 20.0F);
  ASSERT_EQ(to_the_right.size(), 2U);
  EXPECT_FLOAT_EQ(to_the_right[1].normals[0].x, -1.0F);
  const std::vector<Surface> lower_left = make_box({-200, 100, 900}, {-100, 200, 1000}, 20.0F);
  ASSERT_EQ(lower_left.size(), 3U);
  EXPECT_FLOAT_EQ(lower_left[1].normals[0].y, -1.0F);
  EXPECT_FLOAT_EQ(lower_left[2].normals[0].x, 1.0F);
  const std::vector<Surface> above = make_box({-50, -200, 900}, {50, -100, 1000}, 20.0F);
  ASSERT_EQ(above.size(), 2U);
  EXPECT_FLOAT_EQ(above[1].normals[0].y, 1.0F);
}

TEST(MakeCushion, FillsItsBoxAlongTheAxes) {
  const Surface cushion = make_cushion({0, 0, 1000}, {100, 50, 80});
  Vec3 most;
  for (const Vec3& point : cushion.points) {
    most = {std::fmax(most.x, std::fabs(point.x)), std::fmax(most.y, std::fabs(point.y)),
            std::fmax(most.z, std::fabs(point.z - 1000.0F))};
  }
  EXPECT_NEAR(length(most - Vec3{100, 50, 80}), 0.0F, kExact);
}

TEST(Reversed, ShowsTheBackMirrored) {
  const Surface sheet = make_sheet({-10, -20, 500}, {30, 0, 0}, {0, 40, 0}, 10.0F);
  const Surface back = reversed(sheet);
  EXPECT_NEAR(length(back.points.front() - Vec3{20, -20, 500}), 0.0F, kExact);
  for (const Vec3& normal : back.normals) EXPECT_FLOAT_EQ(normal.z, 1.0F);
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
