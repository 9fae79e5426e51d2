// Compares the text helpers with the standard library as the reference: with its number conversion,
// and with its regular expressions where their recursion does not exhaust the stack.
#include <cmath>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <re2/re2.h>

#include "probes/first_match.hpp"
#include "probes/text.hpp"
#include "tests/probes/expressions.hpp"
#include "tests/probes/random_text.hpp"
#include "tests/probes/standard_search.hpp"

namespace halcyra {
namespace {

// "\s" has the vertical tab in ECMAScript, not in RE2.
std::string re2_form(std::string expression) {
  const std::string ecmascript = "\\s";
  const std::string re2 = "[\\s\\v]";
  for (std::size_t at = expression.find(ecmascript); at != std::string::npos;
       at = expression.find(ecmascript, at + re2.size())) {
    expression.replace(at, ecmascript.size(), re2);
  }
  return expression;
}

struct Comparison {
  explicit Comparison(const std::string& expression)
      : ecmascript(expression),
        re2(std::make_unique<re2::RE2>(re2_form(expression), re2::RE2::Latin1)) {}

  std::string ecmascript;
  std::unique_ptr<re2::RE2> re2;
};

std::vector<Comparison> display_comparisons() {
  const DisplayExpressions display;
  std::vector<Comparison> comparisons;
  for (const std::string& expression :
       {display.active_mode, display.whole_screen, display.dimensions}) {
    comparisons.emplace_back(expression);
  }
  return comparisons;
}

std::vector<Comparison> report_comparisons() {
  const VoiceExpressions voice;
  std::vector<Comparison> comparisons;
  for (const std::string& expression :
       {voice.live_processing, voice.default_source, voice.systemd_user_active}) {
    comparisons.emplace_back(expression);
  }
  return comparisons;
}

std::vector<Comparison> event_comparisons() {
  const VoiceExpressions voice;
  std::vector<Comparison> comparisons;
  for (const std::string& expression : {voice.angle, voice.confidence}) {
    comparisons.emplace_back(expression);
  }
  return comparisons;
}

// Compares on random texts of these pieces; enough of them must match.
void compare(const std::vector<Comparison>& comparisons, const std::vector<std::string>& pieces) {
  constexpr int kTexts = 1000;
  RandomText texts(20240607, pieces);
  std::vector<int> matches(comparisons.size(), 0);
  for (int i = 0; i < kTexts; ++i) {
    const std::string text = texts.next(14);
    for (std::size_t c = 0; c < comparisons.size(); ++c) {
      const std::string expected = standard_first_match(text, comparisons[c].ecmascript, "none");
      EXPECT_EQ(first_match(text, *comparisons[c].re2, "none"), expected)
          << testing::PrintToString(text) << " for " << comparisons[c].ecmascript;
      matches[c] += expected != "none" ? 1 : 0;
    }
  }
  for (std::size_t c = 0; c < comparisons.size(); ++c) {
    EXPECT_GT(matches[c], kTexts / 20) << comparisons[c].ecmascript;
    EXPECT_LT(matches[c], kTexts * 9 / 10) << comparisons[c].ecmascript;
  }
}

TEST(TextComparison, FindsInDisplayToolsWhatTheStandardLibraryFinds) {
  compare(display_comparisons(), display_pieces());
}

TEST(TextComparison, FindsInReportsWhatTheStandardLibraryFinds) {
  compare(report_comparisons(), report_pieces());
}

TEST(TextComparison, FindsInEventsWhatTheStandardLibraryFinds) {
  compare(event_comparisons(), event_pieces());
}

struct LongCase {
  std::string expression;
  std::string match;
  std::string group;
};

std::vector<LongCase> long_cases() {
  const DisplayExpressions display;
  const VoiceExpressions voice;
  return {{display.active_mode, " connected primary 2560x1440+0+0", "2560"},
          {display.active_mode, " connected 1920x1080+", "1920"},
          {display.whole_screen, "current\v3840 \f x \r\n1080", "3840"},
          {display.dimensions, "dimensions:    1920x1200 pixels", "1920"},
          {voice.live_processing, "live_processing: running\n", "running"},
          {voice.default_source, "default_source: x  \r\n", "x"},
          {voice.systemd_user_active, "systemd_user_active: active\n", "active"},
          {voice.angle, "\"direction_angle_degrees\" \v: -32.5,", "-32.5"},
          {voice.confidence, "\"direction_confidence\":0.81}", "0.81"}};
}

// Texts that are too long for the standard library's engine.
TEST(TextComparison, FindsAValueBetweenMegabytesInOneLine) {
  const std::vector<LongCase> cases = long_cases();
  for (const std::string& noise :
       {std::string("x"), std::string(1, '\0'), std::string("\xFF"), std::string("\xC3\x28"),
        std::string("\r"), std::string(" connected "), std::string("current 1 x")}) {
    std::string filler;
    while (filler.size() < (1U << 20)) filler += noise;
    for (const LongCase& one : cases) {
      const Comparison comparison(one.expression);
      EXPECT_EQ(first_match(filler + one.match + filler, *comparison.re2, "none"), one.group)
          << one.expression << testing::PrintToString(noise);
      EXPECT_EQ(first_match(filler, *comparison.re2, "none"), "none") << one.expression;
    }
  }
}

TEST(TextComparison, GivesAValueOfMegabytesWhole) {
  const std::string value(2 << 20, 'v');
  const VoiceExpressions voice;
  for (const std::string& expression :
       {voice.live_processing, voice.default_source, voice.systemd_user_active}) {
    const std::string key = expression.substr(0, expression.find('('));
    const std::string text = "before\n" + key + value + " \r\nafter\n";
    EXPECT_TRUE(first_match(text, *Comparison(expression).re2, "none") == value) << expression;
  }
  const std::string digits(2 << 20, '7');
  const std::string event = "\"direction_confidence\": " + digits + "e5";
  EXPECT_TRUE(first_match(event, *Comparison(voice.confidence).re2, "none") == digits);
}

double expected_number(const std::string& text) {
  try {
    return std::stod(text);
  } catch (const std::logic_error&) {
    return std::nan("");
  }
}

TEST(TextComparison, ReadsNumbersAsTheStandardLibraryDoes) {
  RandomText texts(4711,
                   {"0",   "1",   "9",   "5",   ".",   "-", "+", "e",        "E",      "0x", "p",
                    "inf", "nan", "999", "308", "e-3", "a", "I", "infinity", "nan(1)", "00", ","});
  int numbers = 0;
  for (int i = 0; i < 20000; ++i) {
    const std::string text = texts.next(8);
    const double expected = expected_number(text);
    const double actual = parse_double_or_nan(text);
    if (std::isnan(expected)) {
      EXPECT_TRUE(std::isnan(actual)) << testing::PrintToString(text) << actual;
      continue;
    }
    EXPECT_EQ(std::memcmp(&actual, &expected, sizeof actual), 0) << testing::PrintToString(text);
    ++numbers;
  }
  EXPECT_GT(numbers, 5000);
}

}  // namespace
}  // namespace halcyra
