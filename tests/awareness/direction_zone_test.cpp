#include "awareness/direction_zone.hpp"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace halcyra {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

double just_below(double angle) { return std::nextafter(angle, -kInfinity); }

TEST(DirectionZone, NamesTheMiddleOfEachZone) {
  EXPECT_EQ(direction_zone(-70), "far left");
  EXPECT_EQ(direction_zone(-30), "left");
  EXPECT_EQ(direction_zone(-10), "center-left");
  EXPECT_EQ(direction_zone(10), "center-right");
  EXPECT_EQ(direction_zone(30), "right");
  EXPECT_EQ(direction_zone(70), "far right");
}

TEST(DirectionZone, GivesALimitToTheZoneOnItsRight) {
  EXPECT_EQ(direction_zone(-45), "left");
  EXPECT_EQ(direction_zone(-20), "center-left");
  EXPECT_EQ(direction_zone(0), "center-right");
  EXPECT_EQ(direction_zone(20), "right");
  EXPECT_EQ(direction_zone(45), "far right");
  EXPECT_EQ(direction_zone(-0.0), "center-right");
}

TEST(DirectionZone, EndsAZoneJustBelowItsLimit) {
  EXPECT_EQ(direction_zone(just_below(-45)), "far left");
  EXPECT_EQ(direction_zone(just_below(-20)), "left");
  EXPECT_EQ(direction_zone(just_below(0)), "center-left");
  EXPECT_EQ(direction_zone(just_below(20)), "center-right");
  EXPECT_EQ(direction_zone(just_below(45)), "right");
}

TEST(DirectionZone, HasNoBoundsAtTheSides) {
  EXPECT_EQ(direction_zone(-1e6), "far left");
  EXPECT_EQ(direction_zone(std::numeric_limits<double>::lowest()), "far left");
  EXPECT_EQ(direction_zone(720), "far right");
  EXPECT_EQ(direction_zone(std::numeric_limits<double>::max()), "far right");
}

TEST(DirectionZone, IsUnknownForWhatIsNoAngle) {
  EXPECT_EQ(direction_zone(std::nan("")), "unknown");
  EXPECT_EQ(direction_zone(kInfinity), "unknown");
  EXPECT_EQ(direction_zone(-kInfinity), "unknown");
}

}  // namespace
}  // namespace halcyra
