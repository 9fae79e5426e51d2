#include "virtual_kinect/room/value_noise.hpp"

#include <cmath>
#include <cstdint>

#include <gtest/gtest.h>

namespace halcyra::virtual_kinect::room {
namespace {

// The values are part of what every machine must draw alike.
TEST(HashBits, IsTheSameEverywhere) {
  EXPECT_EQ(hash_bits(0), 0U);
  EXPECT_EQ(hash_bits(1), 0x688990C0U);
  EXPECT_EQ(hash_bits(0xFFFFFFFFU), 0x6768824AU);
}

TEST(HashUnit, IsEvenlyDistributed) {
  double sum = 0.0;
  for (std::uint32_t n = 0; n < 10000; ++n) {
    const float value = hash_unit(n);
    EXPECT_GE(value, 0.0F);
    EXPECT_LT(value, 1.0F);
    sum += static_cast<double>(value);
  }
  EXPECT_NEAR(sum / 10000, 0.5, 0.02);
}

TEST(ValueNoise, IsSmoothAndStaysWithinOne) {
  for (const auto noise : {value_noise, layered_noise}) {
    float before = noise({-20, 0.3F, 7.7F}, 5);
    float least = before;
    float most = before;
    for (int i = 1; i < 4000; ++i) {
      const float value = noise({-20.0F + 0.01F * static_cast<float>(i), 0.3F, 7.7F}, 5);
      EXPECT_LT(std::fabs(value - before), 0.05F);
      least = std::fmin(least, value);
      most = std::fmax(most, value);
      before = value;
    }
    EXPECT_GE(least, -1.0F);
    EXPECT_LE(most, 1.0F);
    EXPECT_GT(most - least, 0.8F);
  }
}

TEST(ValueNoise, IsTheSameAloneAndInLayers) {
  for (int i = 0; i < 2000; ++i) {
    const float t = 0.37F * static_cast<float>(i - 1000);
    const Vec3 p{t, 3.0F - 2.0F * t, 0.01F * t};
    const Vec3 q{-1.3F * t, 5.0F, t};
    const auto [layered, single] = layered_and_single_noise(p, 11, q, 40);
    EXPECT_EQ(layered, 0.57F * value_noise(p, 11) + 0.28F * value_noise(p * 2.03F, 12) +
                           0.15F * value_noise(p * 4.1F, 13));
    EXPECT_EQ(layered, layered_noise(p, 11));
    EXPECT_EQ(single, value_noise(q, 40));
  }
}

TEST(ValueNoise, DependsOnItsSeed) {
  EXPECT_NE(value_noise({1.5F, 2.5F, 3.5F}, 1), value_noise({1.5F, 2.5F, 3.5F}, 2));
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
