#include "virtual_kinect/room/coat.hpp"

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

namespace halcyra::virtual_kinect::room {
namespace {

Surface flat() {
  return make_surface(5, 3, [](float u, float v) { return Vec3{100.0F * u, 60.0F * v, 900.0F}; });
}

TEST(Paint, StoresBlueGreenRedAndInfrared) {
  Surface surface = flat();
  paint(surface, {8, 8}, even_coat({{1.0F, 0.2F, 0.4F}, 0.6F}));
  EXPECT_EQ(surface.texture_mips.front().at<cv::Vec4b>(3, 3), cv::Vec4b(102, 51, 255, 153));
}

TEST(Paint, KeepsReflectancesWithinBytes) {
  Surface surface = flat();
  paint(surface, {8, 8}, even_coat({{3.0F, -1.0F, 1.01F}, 9.0F}));
  EXPECT_EQ(surface.texture_mips.front().at<cv::Vec4b>(3, 3), cv::Vec4b(255, 0, 255, 255));
}

// The coat is asked about some texels at a time, and the sizes are no multiples of that.
TEST(Paint, AsksForThePlaceOfEachTexel) {
  for (const cv::Size& size : {cv::Size(10, 20), cv::Size(30, 77), cv::Size(1500, 9)}) {
    Surface surface = flat();
    paint(surface, size, [](const Texels& texels) {
      EXPECT_EQ(texels.v.size(), texels.size());
      EXPECT_EQ(texels.points.size(), texels.size());
      return reflectances(texels, [&](std::size_t i) -> Reflectance {
        EXPECT_NEAR(texels.points.x[i], 100.0F * texels.u[i], 1e-3F);
        EXPECT_NEAR(texels.points.y[i], 60.0F * texels.v[i], 1e-3F);
        EXPECT_EQ(texels.points.z[i], 900.0F);
        return {{texels.u[i], texels.v[i], 0.0F}, 0.0F};
      });
    });
    const cv::Mat& texture = surface.texture_mips.front();
    ASSERT_EQ(texture.size(), size);
    for (int row = 0; row < size.height; ++row) {
      for (int column = 0; column < size.width; ++column) {
        const auto& texel = texture.at<cv::Vec4b>(row, column);
        ASSERT_NEAR(texel[2], 255.0 * (column + 0.5) / size.width, 0.51);
        ASSERT_NEAR(texel[1], 255.0 * (row + 0.5) / size.height, 0.51);
      }
    }
  }
}

TEST(Paint, AsksForThePointsBetweenThoseOfTheGrid) {
  Surface surface = make_surface(7, 6, [](float u, float v) {
    return Vec3{u * u, v * v * v, 5.0F + u * v};
  });
  paint(surface, {40, 30}, [&surface](const Texels& texels) {
    return reflectances(texels, [&](std::size_t i) -> Reflectance {
      const Vec3 expected = interpolated(surface, surface.points, grid_place(texels.u[i], 7),
                                         grid_place(texels.v[i], 6));
      EXPECT_EQ(texels.points.x[i], expected.x);
      EXPECT_EQ(texels.points.y[i], expected.y);
      EXPECT_EQ(texels.points.z[i], expected.z);
      return {};
    });
  });
}

TEST(Paint, MakesHalvesDownToEightTexels) {
  Surface surface = flat();
  paint(surface, {64, 40}, even_coat({{1, 1, 1}, 1}));
  ASSERT_EQ(surface.texture_mips.size(), 3U);
  EXPECT_EQ(surface.texture_mips[1].size(), cv::Size(32, 20));
  EXPECT_EQ(surface.texture_mips[2].size(), cv::Size(16, 10));
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
