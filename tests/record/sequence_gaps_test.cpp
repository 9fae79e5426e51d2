#include "record/sequence_gaps.hpp"

#include <vector>

#include <gtest/gtest.h>

namespace halcyra::record {
namespace {

std::uint64_t skipped(const std::vector<std::uint32_t>& numbers) {
  SequenceGaps gaps;
  for (const std::uint32_t number : numbers) gaps.see(number);
  return gaps.skipped();
}

TEST(SequenceGaps, AreCountedBetweenFrames) {
  EXPECT_EQ(skipped({}), 0U);
  EXPECT_EQ(skipped({77}), 0U);
  EXPECT_EQ(skipped({5, 6, 7}), 0U);
  EXPECT_EQ(skipped({5, 8, 9, 12}), 4U);
}

TEST(SequenceGaps, WrapWithTheNumbers) {
  EXPECT_EQ(skipped({0xFFFFFFFE, 0xFFFFFFFF, 0, 1}), 0U);
  EXPECT_EQ(skipped({0xFFFFFFFE, 2}), 3U);
}

TEST(SequenceGaps, IgnoreRepeatedAndEarlierNumbers) {
  EXPECT_EQ(skipped({5, 5, 6}), 0U);
  EXPECT_EQ(skipped({900, 0, 1}), 0U);
}

}  // namespace
}  // namespace halcyra::record
