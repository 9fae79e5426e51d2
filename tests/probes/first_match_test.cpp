#include "probes/first_match.hpp"

#include <string>

#include <gtest/gtest.h>
#include <re2/re2.h>

namespace halcyra {
namespace {

using std::string_literals::operator""s;

const re2::RE2& key() {
  static const re2::RE2 expression("key: ([^\\n]+)", re2::RE2::Latin1);
  return expression;
}

TEST(FirstMatch, GivesTheTrimmedGroupOfTheFirstMatch) {
  EXPECT_EQ(first_match("key: x  ", key(), "unknown"), "x");
  EXPECT_EQ(first_match("a\nb key: \t one two\r\nkey: three\n", key(), "unknown"), "one two");
  EXPECT_EQ(first_match("key: \nkey: later", key(), "unknown"), "later");
}

TEST(FirstMatch, GivesTheFallbackUntrimmedWithoutAMatch) {
  EXPECT_EQ(first_match("", key(), "unknown"), "unknown");
  EXPECT_EQ(first_match("key:x", key(), " \t fall back\n "), " \t fall back\n ");
  EXPECT_EQ(first_match("Key: x", key(), ""), "");
}

TEST(FirstMatch, IsEmptyWhereTheGroupIsBlank) {
  EXPECT_EQ(first_match("key:  \t\r \n", key(), "unknown"), "");
}

TEST(FirstMatch, GivesTheFallbackWithoutAGroup) {
  EXPECT_EQ(first_match("abc", re2::RE2("b"), " fallback "), " fallback ");
  EXPECT_EQ(first_match("abc", re2::RE2("(?:b)"), "fallback"), "fallback");
}

TEST(FirstMatch, IsEmptyWhereTheGroupTookNoPart) {
  EXPECT_EQ(first_match("b", re2::RE2("(a)|b"), "fallback"), "");
  EXPECT_EQ(first_match("", re2::RE2("(a)?"), "fallback"), "");
}

TEST(FirstMatch, TakesTheFirstOfSeveralGroups) {
  EXPECT_EQ(first_match("12x34", re2::RE2("(\\d+)x(\\d+)"), "fallback"), "12");
}

TEST(FirstMatch, TakesAnyBytes) {
  EXPECT_EQ(first_match("\0\xFFkey: a\0b\xC3\n"s, key(), "unknown"), "a\0b\xC3"s);
  EXPECT_EQ(first_match("\xE2key: \xA0\x85 \r\n"s, key(), "unknown"), "\xA0\x85");
}

}  // namespace
}  // namespace halcyra
