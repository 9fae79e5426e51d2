#include "virtual_kinect/room/surface.hpp"

#include <cmath>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

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
    const Vec3 point = interpolated(surface, surface.points, u, v);
    EXPECT_LT(length(point - Vec3{100.0F * u, 60.0F * v, 900.0F}), 1e-3F);
  }
}

TEST(Paint, StoresBlueGreenRedAndInfrared) {
  Surface surface = flat();
  paint(surface, {8, 8}, [](float, float, const Vec3&) {
    return Reflectance{{1.0F, 0.2F, 0.4F}, 0.6F};
  });
  EXPECT_EQ(surface.texture_mips.front().at<cv::Vec4b>(3, 3), cv::Vec4b(102, 51, 255, 153));
}

TEST(Paint, KeepsReflectancesWithinBytes) {
  Surface surface = flat();
  paint(surface, {8, 8}, [](float, float, const Vec3&) {
    return Reflectance{{3.0F, -1.0F, 1.01F}, 9.0F};
  });
  EXPECT_EQ(surface.texture_mips.front().at<cv::Vec4b>(3, 3), cv::Vec4b(255, 0, 255, 255));
}

TEST(Paint, AsksForThePlaceOfEachTexel) {
  Surface surface = flat();
  paint(surface, {10, 20}, [](float u, float v, const Vec3& point) {
    EXPECT_NEAR(point.x, 100.0F * u, 1e-3F);
    EXPECT_NEAR(point.y, 60.0F * v, 1e-3F);
    return Reflectance{{u, v, 0.0F}, 0.0F};
  });
  const cv::Mat& texture = surface.texture_mips.front();
  EXPECT_EQ(texture.size(), cv::Size(10, 20));
  EXPECT_EQ(texture.at<cv::Vec4b>(0, 9)[2], 242);   // 0.95
  EXPECT_EQ(texture.at<cv::Vec4b>(19, 0)[1], 249);  // 0.975
}

TEST(Paint, MakesHalvesDownToEightTexels) {
  Surface surface = flat();
  paint(surface, {64, 40}, [](float, float, const Vec3&) { return Reflectance{{1, 1, 1}, 1}; });
  ASSERT_EQ(surface.texture_mips.size(), 3U);
  EXPECT_EQ(surface.texture_mips[1].size(), cv::Size(32, 20));
  EXPECT_EQ(surface.texture_mips[2].size(), cv::Size(16, 10));
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
