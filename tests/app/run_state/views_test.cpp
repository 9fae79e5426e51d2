#include "app/run_state/views.hpp"

#include <cctype>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/app/same_options.hpp"

namespace halcyra {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

const Pairs& view_words() {
  static const Pairs words = {
      {"rgb", "rgb"},
      {"face", "rgb"},
      {"ir", "ir"},
      {"depth", "depth"},
      {"skeletal", "skeletal"},
      {"skeleton", "skeletal"},
      {"combo", "combo"},
      {"auto", "combo"},
      {"audio", "combo"},
      {"debug", "combo"},
      {"room", "room_overview"},
      {"room_overview", "room_overview"},
      {"overview", "room_overview"},
      {"follow", "follow"},
  };
  return words;
}

const std::vector<std::string>& unknown_words() {
  static const std::vector<std::string> words = {"",
                                                 "xyz",
                                                 " rgb",
                                                 "rgb ",
                                                 "rg",
                                                 "rgbx",
                                                 "room overview",
                                                 "room-overview",
                                                 "infrared",
                                                 "follow\n",
                                                 "1",
                                                 "--view",
                                                 std::string("rgb\0", 4),
                                                 "d\xC3\x89pth",
                                                 "\xC4\xB0r"};
  return words;
}

std::string upper(std::string word) {
  for (char& c : word) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return word;
}

// Every second letter in upper case.
std::string mixed(std::string word) {
  for (std::size_t i = 0; i < word.size(); i += 2) word[i] = upper(word.substr(i, 1))[0];
  return word;
}

TEST(CanonicalView, KnowsEveryWord) {
  for (const auto& [word, view] : view_words()) EXPECT_EQ(canonical_view(word), view) << word;
}

TEST(CanonicalView, IgnoresTheLetterCase) {
  for (const auto& [word, view] : view_words()) {
    EXPECT_EQ(canonical_view(upper(word)), view) << word;
    EXPECT_EQ(canonical_view(mixed(word)), view) << word;
  }
}

TEST(CanonicalView, HasNoNameForOtherWords) {
  for (const std::string& word : unknown_words()) EXPECT_EQ(canonical_view(word), "") << word;
}

TEST(ViewLabel, NamesEveryView) {
  const Pairs labels = {{"rgb", "RGB"},      {"ir", "IR"},
                        {"depth", "DEPTH"},  {"skeletal", "SKELETAL"},
                        {"combo", "COMBO"},  {"room_overview", "ROOM OVERVIEW"},
                        {"follow", "FOLLOW"}};
  for (const auto& [view, label] : labels) EXPECT_EQ(view_label(view), label);
}

TEST(ViewLabel, IsComboForAnythingElse) {
  for (const std::string word : {"", "RGB", "skeleton", "room", "scan", "rgb ", "degraded"}) {
    EXPECT_EQ(view_label(word), "COMBO") << word;
  }
}

// Selects a word in options that stand on another view.
Options after_selecting(const std::string& word, bool legacy) {
  Options options;
  options.view = "depth";
  options.overlay_mode = "earlier";
  options.mic_hud = false;
  select_view(options, word, legacy);
  return options;
}

Options expected_after(const std::string& view, const std::string& overlay_mode) {
  Options options;
  options.view = view;
  options.overlay_mode = overlay_mode;
  options.mic_hud = false;
  return options;
}

TEST(SelectView, SetsTheViewAndLetsTheOverlayModeFollow) {
  for (const auto& [word, view] : view_words()) {
    if (word == "debug" || word == "audio") continue;
    SCOPED_TRACE(word);
    expect_same_options(after_selecting(word, false), expected_after(view, view));
    expect_same_options(after_selecting(upper(word), false), expected_after(view, view));
  }
}

TEST(SelectView, KeepsALegacyWordAsGiven) {
  for (const auto& [word, view] : view_words()) {
    if (word == "debug" || word == "audio") continue;
    SCOPED_TRACE(word);
    expect_same_options(after_selecting(word, true), expected_after(view, word));
    expect_same_options(after_selecting(upper(word), true), expected_after(view, upper(word)));
  }
}

TEST(SelectView, LeavesTheViewForAnUnknownWord) {
  for (const std::string& word : unknown_words()) {
    SCOPED_TRACE(word);
    expect_same_options(after_selecting(word, false), expected_after("depth", "depth"));
    expect_same_options(after_selecting(word, true), expected_after("depth", word));
  }
}

TEST(SelectView, SwitchesDebugOnByItsExactWord) {
  for (const bool legacy : {false, true}) {
    Options expected = expected_after("combo", legacy ? "debug" : "combo");
    expected.debug = true;
    expect_same_options(after_selecting("debug", legacy), expected);
    expect_same_options(after_selecting("DEBUG", legacy),
                        expected_after("combo", legacy ? "DEBUG" : "combo"));
  }
}

TEST(SelectView, SwitchesTheMicrophoneOnByItsExactWord) {
  for (const bool legacy : {false, true}) {
    Options expected = expected_after("combo", legacy ? "audio" : "combo");
    expected.mic_hud = true;
    expect_same_options(after_selecting("audio", legacy), expected);
    expect_same_options(after_selecting("Audio", legacy),
                        expected_after("combo", legacy ? "Audio" : "combo"));
  }
}

TEST(SelectView, NeverSwitchesDebugOrTheMicrophoneOff) {
  for (const auto& [word, view] : view_words()) {
    Options options;
    options.debug = true;
    options.mic_hud = true;
    select_view(options, word, false);
    EXPECT_TRUE(options.debug) << word;
    EXPECT_TRUE(options.mic_hud) << word;
  }
}

}  // namespace
}  // namespace halcyra
