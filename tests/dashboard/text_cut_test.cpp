#include "dashboard/text_cut.hpp"

#include <gtest/gtest.h>

namespace halcyra {
namespace {

using Lines = std::vector<std::string>;

TEST(Clipped, KeepsATextThatFits) {
  EXPECT_EQ(clipped("abcdef", 6), "abcdef");
  EXPECT_EQ(clipped("abcdef", 7), "abcdef");
  EXPECT_EQ(clipped("abc", 3), "abc");
  EXPECT_EQ(clipped("", 0), "");
}

TEST(Clipped, EndsACutTextWithThreeDots) {
  EXPECT_EQ(clipped("abcdef", 5), "ab...");
  EXPECT_EQ(clipped("abcdef", 4), "a...");
}

TEST(Clipped, CutsWithoutDotsWhereThereIsNoRoomForThem) {
  EXPECT_EQ(clipped("abcdef", 3), "abc");
  EXPECT_EQ(clipped("abcdef", 2), "ab");
  EXPECT_EQ(clipped("abcdef", 1), "a");
  EXPECT_EQ(clipped("abcdef", 0), "");
}

TEST(Clipped, CountsBytes) {
  EXPECT_EQ(clipped("\xC3\xA4\xC3\xA4\xC3\xA4", 6), "\xC3\xA4\xC3\xA4\xC3\xA4");
  EXPECT_EQ(clipped("\xC3\xA4\xC3\xA4\xC3\xA4", 5), "\xC3\xA4...");
}

TEST(Wrap, SeparatesWordsAtAnyWhiteSpace) {
  EXPECT_EQ(wrap("a  b\tc", 3), (Lines{"a b", "c"}));
  EXPECT_EQ(wrap(" \n a\r\nb \t", 10), (Lines{"a b"}));
}

TEST(Wrap, FillsALineUpToTheWidth) {
  EXPECT_EQ(wrap("ab cde", 6), (Lines{"ab cde"}));
  EXPECT_EQ(wrap("ab cde", 5), (Lines{"ab", "cde"}));
  EXPECT_EQ(wrap("one two three four", 9), (Lines{"one two", "three", "four"}));
}

TEST(Wrap, NeverSplitsAWord) {
  EXPECT_EQ(wrap("abcdefgh i", 4), (Lines{"abcdefgh", "i"}));
  EXPECT_EQ(wrap("i abcdefgh", 4), (Lines{"i", "abcdefgh"}));
  EXPECT_EQ(wrap("a b", 0), (Lines{"a", "b"}));
}

TEST(Wrap, GivesNoLinesForABlankText) {
  EXPECT_EQ(wrap("", 10), Lines{});
  EXPECT_EQ(wrap(" \t\n ", 10), Lines{});
}

}  // namespace
}  // namespace halcyra
