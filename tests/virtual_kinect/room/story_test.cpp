#include "virtual_kinect/room/story.hpp"

#include <cmath>
#include <cstdint>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "virtual_kinect/room/dimensions.hpp"

namespace halcyra::virtual_kinect::room {
namespace {

constexpr float kFastestStep = 100.0F;  // millimetres from one set to the next: 3 m a second
constexpr float kFastestTurn = 12.0F;   // degrees from one set to the next
constexpr float kOutOfView = 1.2F;      // |x| over z beyond which people are out of view

std::map<Person, Posture> people_at(std::uint64_t set) {
  std::map<Person, Posture> people;
  for (const Presence& presence : moment_at(set).people) {
    EXPECT_TRUE(people.emplace(presence.person, presence.posture).second) << "twice at " << set;
  }
  return people;
}

bool is_out_of_view(const Posture& posture) {
  return std::fabs(posture.x) > kOutOfView * posture.z;
}

TEST(Story, StartsAgainAfterAMinute) {
  for (std::uint64_t set = 0; set < kStorySets; set += 17) {
    const auto first = people_at(set);
    const auto again = people_at(set + 3 * kStorySets);
    ASSERT_EQ(first.size(), again.size());
    for (const auto& [person, posture] : first) {
      EXPECT_EQ(posture.x, again.at(person).x);
      EXPECT_EQ(posture.head_yaw, again.at(person).head_yaw);
    }
  }
}

TEST(Story, OpensWithSomebodyInView) {
  const auto people = people_at(kOpeningSet);
  ASSERT_EQ(people.size(), 1U);
  EXPECT_LT(std::fabs(people.begin()->second.x), 0.8F * people.begin()->second.z);
}

TEST(Story, LetsNobodyJumpAppearOrVanish) {
  auto before = people_at(0);
  for (std::uint64_t set = 1; set <= kStorySets; ++set) {
    const auto now = people_at(set);
    for (const auto& [person, posture] : now) {
      if (before.count(person) == 0) {
        EXPECT_TRUE(is_out_of_view(posture)) << "appears at " << set;
        continue;
      }
      const Posture& last = before.at(person);
      EXPECT_LT(std::hypot(posture.x - last.x, posture.z - last.z), kFastestStep) << set;
      EXPECT_LT(std::fabs(posture.body_yaw - last.body_yaw), kFastestTurn) << set;
      EXPECT_LT(std::fabs(posture.head_yaw - last.head_yaw), kFastestTurn) << set;
    }
    for (const auto& [person, posture] : before) {
      if (now.count(person) == 0) {
        EXPECT_TRUE(is_out_of_view(posture)) << "vanishes at " << set;
      }
    }
    before = now;
  }
}

TEST(Story, KeepsPeopleInFrontOfTheBackWall) {
  for (std::uint64_t set = 0; set < kStorySets; ++set) {
    for (const auto& [person, posture] : people_at(set)) {
      EXPECT_LT(posture.z, kBackWallDepth - 500.0F) << set;
      EXPECT_GT(posture.z, 1000.0F) << set;
    }
  }
}

TEST(Story, ShowsEverybodyTogetherAndNobody) {
  std::set<std::size_t> counts;
  for (std::uint64_t set = 0; set < kStorySets; ++set) counts.insert(people_at(set).size());
  EXPECT_EQ(counts, (std::set<std::size_t>{0, 1, 2, 3}));
}

TEST(Story, DarkensOverexposesAndBlursForAWhile) {
  float darkest = 1.0F;
  float brightest = 1.0F;
  float blur = 0.0F;
  int usual = 0;
  for (std::uint64_t set = 0; set < kStorySets; ++set) {
    const Moment moment = moment_at(set);
    darkest = std::fmin(darkest, moment.light.daylight);
    brightest = std::fmax(brightest, moment.light.daylight);
    blur = std::fmax(blur, moment.defocus);
    usual += moment.light.daylight == 1.0F && moment.defocus == 0.0F ? 1 : 0;
  }
  EXPECT_LT(darkest, 0.2F);
  EXPECT_GT(brightest, 3.0F);
  EXPECT_GT(blur, 3.0F);
  EXPECT_GT(usual, 50 * static_cast<int>(kSetsPerSecond));
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
