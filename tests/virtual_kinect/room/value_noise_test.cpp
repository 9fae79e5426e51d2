#include "virtual_kinect/room/value_noise.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "virtual_kinect/room/noise_kernels.hpp"

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
  using Noise = float(const Vec3& p, std::uint32_t seed);
  for (Noise* const noise :
       {static_cast<Noise*>(value_noise), static_cast<Noise*>(layered_noise)}) {
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

TEST(LayeredNoise, IsASumOfOctaves) {
  for (const Vec3& p : {Vec3{0.3F, -7.1F, 2.0F}, Vec3{-40.0F, 0.01F, 900.5F}}) {
    EXPECT_EQ(layered_noise(p, 11), 0.57F * value_noise(p, 11) +
                                        0.28F * value_noise(p * 2.03F, 12) +
                                        0.15F * value_noise(p * 4.1F, 13));
  }
}

// On both sides of 0, at corners of the lattice and between them.
Places many_places(std::size_t count) {
  Places places;
  for (std::size_t i = 0; i < count; ++i) {
    const float t = 0.375F * (static_cast<float>(i) - 1000.0F);
    places.add({t, 3.0F - 2.1F * t, i % 3 == 0 ? -0.0F : 0.01F * t});
  }
  return places;
}

std::vector<std::uint32_t> many_seeds(std::size_t count) {
  std::vector<std::uint32_t> seeds;
  for (std::size_t i = 0; i < count; ++i) seeds.push_back(hash_bits(static_cast<std::uint32_t>(i)));
  return seeds;
}

TEST(ValueNoise, IsTheSameWithEveryInstructionSet) {
  for (const std::size_t count : {2000U, 0U, 1U, 7U, 8U, 9U, 13U}) {
    const Places places = many_places(count);
    const std::vector<std::uint32_t> seeds = many_seeds(count);
    for (NoiseKernel* const kernel : available_noise_kernels()) {
      constexpr float kUntouched = 9.0F;
      std::vector<float> noises(count + 1, kUntouched);
      kernel({places.x.data(), places.y.data(), places.z.data(), seeds.data(), count},
             noises.data());
      for (std::size_t i = 0; i < count; ++i) {
        ASSERT_EQ(noises[i], value_noise(places[i], seeds[i])) << i << " of " << count;
      }
      EXPECT_EQ(noises[count], kUntouched);
    }
  }
}

TEST(ValueNoise, IsTheSameForManyPlacesAsForEach) {
  const Places places = many_places(100);
  const std::vector<std::uint32_t> seeds = many_seeds(100);
  const std::vector<float> single = value_noise(places, 40);
  const std::vector<float> layered = layered_noise(places, 41);
  const std::vector<float> seeded = layered_noise(places, seeds);
  for (std::size_t i = 0; i < places.size(); ++i) {
    EXPECT_EQ(single[i], value_noise(places[i], 40));
    EXPECT_EQ(layered[i], layered_noise(places[i], 41));
    EXPECT_EQ(seeded[i], layered_noise(places[i], seeds[i]));
  }
}

TEST(ValueNoise, DependsOnItsSeed) {
  EXPECT_NE(value_noise({1.5F, 2.5F, 3.5F}, 1), value_noise({1.5F, 2.5F, 3.5F}, 2));
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
