#include "enroll/report_text.hpp"

#include <locale>
#include <string>

#include <gtest/gtest.h>

namespace halcyra {
namespace {

TEST(Printable, LeavesOrdinaryTextAlone) {
  for (const char* text : {"", "front/20261122T101010Z-1.png", "two words", "Zo\xC3\xAB",
                           "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "~"}) {
    EXPECT_EQ(printable(text), text);
  }
}

TEST(Printable, ReplacesControlCharacters) {
  EXPECT_EQ(printable("a\x1B[31mb"), "a?[31mb");
  EXPECT_EQ(printable("a\nb\tc\rd\x7F"), "a?b?c?d?");
  EXPECT_EQ(printable(std::string("a\0b", 3)), "a?b");
  EXPECT_EQ(printable("a\xC2\x9B"
                      "b"),
            "a?b");  // starts a terminal's command in one character
}

TEST(Printable, ReplacesMarksOfDirectionAndLineEnds) {
  EXPECT_EQ(printable("a\xE2\x80\xAEgnp.b"), "a?gnp.b");
  EXPECT_EQ(printable("\xE2\x81\xA6\xE2\x80\x8F\xD8\x9C\xE2\x80\xA8"), "????");
}

TEST(Printable, ReplacesEachByteThatIsNotUtf8) {
  EXPECT_EQ(printable("a\xFF\xC3\xA9"), "a?\xC3\xA9");
  EXPECT_EQ(printable("\x80"), "?");
  EXPECT_EQ(printable("\xC3"), "?");       // cut off
  EXPECT_EQ(printable("\xC3x"), "?x");     // no continuation
  EXPECT_EQ(printable("\xC0\xAF"), "??");  // longer than it must be
  EXPECT_EQ(printable("\xE0\x80\xAF"), "???");
  EXPECT_EQ(printable("\xED\xA0\x80"), "???");  // half of a pair of UTF-16
  EXPECT_EQ(printable("\xF4\x90\x80\x80"), "????");
  EXPECT_EQ(printable("\xF5\x80\x80\x80"), "????");
}

TEST(ShownWidth, CountsCharacters) {
  EXPECT_EQ(shown_width(""), 0U);
  EXPECT_EQ(shown_width("abc"), 3U);
  EXPECT_EQ(shown_width("Zo\xC3\xAB \xE2\x82\xAC"), 5U);
}

class DecimalComma : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(DecimalText, RoundsAndKeepsThePointInAnyLocale) {
  const std::locale before =
      std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
  EXPECT_EQ(decimal_text(12345.67, 1), "12345.7");
  EXPECT_EQ(decimal_text(0.04, 1), "0.0");
  EXPECT_EQ(decimal_text(59.5, 0), "60");
  std::locale::global(before);
}

}  // namespace
}  // namespace halcyra
