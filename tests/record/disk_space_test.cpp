#include "record/disk_space.hpp"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.hpp"

namespace halcyra::record {
namespace {

TEST(FreeBytes, AreKnownForAFolderOnly) {
  const TemporaryFolder folder;
  EXPECT_TRUE(free_bytes(folder.path()));
  EXPECT_FALSE(free_bytes(folder.path() / "missing"));
}

TEST(ExpectedBytes, GrowWithTheLimitAndTheStreams) {
  RecordOptions options;
  EXPECT_EQ(expected_bytes(options), 0U);
  options.sets_given = true;
  options.sets = 300;
  const std::uint64_t sets = expected_bytes(options);
  EXPECT_GT(sets, 0U);
  options.color = ColorFiles::kPng;
  EXPECT_GT(expected_bytes(options), sets);
  options.streams[kColor] = false;
  EXPECT_LT(expected_bytes(options), sets);

  RecordOptions ten_seconds;
  ten_seconds.seconds = 10;
  EXPECT_EQ(expected_bytes(ten_seconds), sets);
}

TEST(SpaceFault, IsSaidBelowTheReserve) {
  EXPECT_EQ(space_fault(kFreeAtStart, 0), "");
  EXPECT_EQ(space_fault(kFreeAtStart - 1, 0),
            "only 537 MB are free, and a recording needs at least 537 MB");
  EXPECT_EQ(space_fault(0, 0), "only 0.0 MB are free, and a recording needs at least 537 MB");
}

TEST(SpaceFault, IsSaidWhereTheRecordingDoesNotFit) {
  const std::uint64_t free = 2'000'000'000;
  EXPECT_EQ(space_fault(free, free - kFreeToGoOn), "");
  EXPECT_EQ(space_fault(free, 3'000'000'000),
            "only 2000 MB are free, and this recording may take 3000 MB");
}

TEST(SpaceFaultOnTheWay, IsSaidBelowTheReserve) {
  EXPECT_EQ(space_fault_on_the_way(kFreeToGoOn), "");
  EXPECT_EQ(space_fault_on_the_way(kFreeToGoOn - 1),
            "the disk is nearly full: only 268 MB are free");
}

TEST(SpaceFault, IsNotSaidWhereNothingIsKnown) {
  EXPECT_EQ(space_fault(std::nullopt, 1'000'000'000'000), "");
  EXPECT_EQ(space_fault_on_the_way(std::nullopt), "");
}

TEST(InMegabytes, HasADecimalBelowAHundred) {
  EXPECT_EQ(in_megabytes(0), "0.0 MB");
  EXPECT_EQ(in_megabytes(12'345'678), "12.3 MB");
  EXPECT_EQ(in_megabytes(123'456'789), "123 MB");
}

}  // namespace
}  // namespace halcyra::record
