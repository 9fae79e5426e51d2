#include "virtual_kinect/room/surface.hpp"

#include <cmath>

#include <gtest/gtest.h>

namespace halcyra::virtual_kinect::room {
namespace {

Surface flat() {
  return make_surface(5, 3, [](float u, float v) { return Vec3{100.0F * u, 60.0F * v, 900.0F}; });
}

TEST(Surface, HasAPointForEachColumnAndRow) {
  const Surface surface = flat();
  EXPECT_EQ(surface.points.size(), 15U);
  EXPECT_FLOAT_EQ(surface.points[surface.index(1, 0)].x, 25.0F);
  EXPECT_FLOAT_EQ(surface.points[surface.index(1, 2)].y, 60.0F);
  for (const float openness : surface.openness) EXPECT_EQ(openness, 1.0F);
  for (const Vec3& normal : surface.normals) EXPECT_FLOAT_EQ(normal.z, -1.0F);
}

TEST(Surface, HasOneNormalAtTheSeamOfAClosedGrid) {
  const Surface tube = make_surface(9, 3, [](float u, float v) {
    const float angle = 2.0F * kPi * u;
    return Vec3{10.0F * std::sin(angle), 50.0F * v, 10.0F * std::cos(angle)};
  });
  const Vec3 first = tube.normals[tube.index(0, 1)];
  EXPECT_LT(length(first - tube.normals[tube.index(8, 1)]), 1e-4F);
  EXPECT_NEAR(std::fabs(first.z), 1.0F, 1e-4F);
}

TEST(Surface, InterpolatesBetweenItsPoints) {
  const Surface surface = flat();
  for (const auto& [u, v] : {std::pair(0.0F, 0.0F), std::pair(0.3F, 0.8F), std::pair(1.0F, 1.0F)}) {
    const Vec3 point = interpolated(surface, surface.points, grid_place(u, surface.columns),
                                    grid_place(v, surface.rows));
    EXPECT_LT(length(point - Vec3{100.0F * u, 60.0F * v, 900.0F}), 1e-3F);
  }
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
