#include "probes/text.hpp"

#include <locale.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace halcyra {
namespace {

using std::string_literals::operator""s;

TEST(Trim, RemovesTheFourBlanksAtBothEnds) {
  EXPECT_EQ(trim("active\n"), "active");
  EXPECT_EQ(trim(" \t\r\nactive"), "active");
  EXPECT_EQ(trim("\n\r\t active\n\r\t "), "active");
  EXPECT_EQ(trim(" "), "");
  EXPECT_EQ(trim(" \t\r\n \n\r\t "), "");
  EXPECT_EQ(trim(""), "");
}

TEST(Trim, KeepsEverythingElse) {
  EXPECT_EQ(trim("active"), "active");
  EXPECT_EQ(trim(" a \t\r\n b "), "a \t\r\n b");
  EXPECT_EQ(trim("a\vb"), "a\vb");
  EXPECT_EQ(trim("\va\v"), "\va\v");
  EXPECT_EQ(trim(" \f a \f "), "\f a \f");
  EXPECT_EQ(trim("\0 a \0"s), "\0 a \0"s);
  EXPECT_EQ(trim("\xA0 a\x85"), "\xA0 a\x85");
  EXPECT_EQ(trim("\v"), "\v");
}

TEST(Trim, TakesLongTexts) {
  const std::string blanks(1 << 20, ' ');
  const std::string letters(1 << 20, 'x');
  EXPECT_EQ(trim(blanks), "");
  EXPECT_TRUE(trim(blanks + letters + blanks) == letters);
}

TEST(ParseDoubleOrNan, ReadsNumbers) {
  for (const auto& [text, value] : std::vector<std::pair<std::string, double>>{
           {"0", 0.0},
           {"12", 12.0},
           {"-12.5", -12.5},
           {"+0.45", 0.45},
           {".5", 0.5},
           {"5.", 5.0},
           {"1e3", 1000.0},
           {"1E-3", 0.001},
           {"0x1p4", 16.0},
           {"0x1A", 26.0},
           {"-0X.8", -0.5},
           {"1.7976931348623157e308", 1.7976931348623157e308},
           {"2.2250738585072014e-308", 2.2250738585072014e-308},
           {"0e999", 0.0},
           {"0.1000000000000000055511151231257827", 0.1}}) {
    EXPECT_EQ(parse_double_or_nan(text), value) << text;
  }
  EXPECT_TRUE(std::signbit(parse_double_or_nan("-0")));
}

TEST(ParseDoubleOrNan, SkipsWhiteSpaceAndIgnoresTheRest) {
  EXPECT_EQ(parse_double_or_nan("12.5 deg"), 12.5);
  EXPECT_EQ(parse_double_or_nan(" \t\n\v\f\r-7x"), -7.0);
  EXPECT_EQ(parse_double_or_nan("1.2.3"), 1.2);
  EXPECT_EQ(parse_double_or_nan("1e"), 1.0);
  EXPECT_EQ(parse_double_or_nan("1e+"), 1.0);
  EXPECT_EQ(parse_double_or_nan("0x"), 0.0);
  EXPECT_EQ(parse_double_or_nan("1,5"), 1.0);
  EXPECT_EQ(parse_double_or_nan("3\0 4"s), 3.0);
  EXPECT_EQ(parse_double_or_nan("30-"), 30.0);
}

TEST(ParseDoubleOrNan, AcceptsTheWordsForInfinityAndNan) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(parse_double_or_nan("inf"), infinity);
  EXPECT_EQ(parse_double_or_nan(" -Infinity!"), -infinity);
  EXPECT_EQ(parse_double_or_nan("INFINITE"), infinity);
  EXPECT_TRUE(std::isnan(parse_double_or_nan("nan")));
  EXPECT_TRUE(std::isnan(parse_double_or_nan("-NaN(7)")));
}

TEST(ParseDoubleOrNan, IsNanWithoutANumber) {
  for (const std::string& text :
       std::vector<std::string>{"", " ", "unknown", "-", "+", ".", "-.", "e5", "--5", "- 5", "..1",
                                "\"5\"", "\0005"s, "\2405", "x1", "in", "na"}) {
    EXPECT_TRUE(std::isnan(parse_double_or_nan(text))) << text;
  }
}

TEST(ParseDoubleOrNan, IsNanOutOfRange) {
  for (const std::string& text : std::vector<std::string>{
           "1e999", "-1e999", "1e-999", "-1e-999", "1e309", "0x1p9999", "1e-320",
           std::string(400, '9'), "0." + std::string(400, '0') + "1"}) {
    EXPECT_TRUE(std::isnan(parse_double_or_nan(text))) << text;
  }
}

TEST(ParseDoubleOrNan, IsNotDisturbedByAnEarlierError) {
  errno = ERANGE;
  EXPECT_EQ(parse_double_or_nan("12.5"), 12.5);
}

TEST(ParseDoubleOrNan, TakesLongTexts) {
  EXPECT_EQ(parse_double_or_nan(std::string(1 << 20, ' ') + "4.5"), 4.5);
  EXPECT_EQ(parse_double_or_nan("4.5" + std::string(1 << 20, '0')), 4.5);
  EXPECT_TRUE(std::isnan(parse_double_or_nan(std::string(1 << 20, 'x'))));
}

// Switches to any installed locale that writes a decimal comma; false when there is none.
bool switch_to_a_decimal_comma() {
  for (const char* name :
       {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "es_ES.UTF-8", "it_IT.UTF-8", "nl_NL.UTF-8",
        "pt_BR.UTF-8", "ru_RU.UTF-8", "pl_PL.UTF-8", "sv_SE.UTF-8", "da_DK.UTF-8", "fi_FI.UTF-8"}) {
    if (setlocale(LC_ALL, name) == nullptr) continue;
    if (std::string(localeconv()->decimal_point) == ",") return true;
  }
  setlocale(LC_ALL, "C");
  return false;
}

// The window system switches the process to the user's locale.
TEST(ParseDoubleOrNan, ReadsADecimalPointInEveryLocale) {
  if (!switch_to_a_decimal_comma()) GTEST_SKIP() << "no locale with a decimal comma is installed";
  EXPECT_EQ(parse_double_or_nan("-32.5"), -32.5);
  EXPECT_EQ(parse_double_or_nan("1,5"), 1.0);
  setlocale(LC_ALL, "C");
}

}  // namespace
}  // namespace halcyra
