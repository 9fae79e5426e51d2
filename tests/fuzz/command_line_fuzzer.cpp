// The command line: the input's lines are its words. NUL bytes divide words, too, as no argument
// can hold one.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/command_line.hpp"
#include "app/run_state/views.hpp"
#include "tests/fuzz/requirement.hpp"
#include "tests/fuzz/text_input.hpp"

namespace halcyra {
namespace {

// Without the words that print the usage and end the process.
std::vector<std::string> words_of(std::string text) {
  std::replace(text.begin(), text.end(), '\0', '\n');
  std::istringstream lines(text);
  std::vector<std::string> words = {"halcyra-control-center"};
  for (std::string word; std::getline(lines, word);) {
    if (word != "--help" && word != "-h") words.push_back(word);
  }
  return words;
}

bool is_one_of(const std::string& word, std::initializer_list<const char*> known) {
  return std::any_of(known.begin(), known.end(), [&](const char* each) { return word == each; });
}

bool is_unset_or_within(double value, double least, double most) {
  return value == 0 || (value >= least && value <= most);
}

void check(const Options& options) {
  require(options.frames >= 0, "frames are not negative");
  require(options.screen_percent >= 0.35 && options.screen_percent <= 1.0, "screen_percent");
  require(is_unset_or_within(options.width, 800, 7680), "width");
  require(is_unset_or_within(options.height, 480, 4320), "height");
  require(is_unset_or_within(options.font_scale, 0.7, 2.4), "font_scale");
  require(is_one_of(options.preset, {"compact", "normal", "large"}), "preset");
  require(is_one_of(options.detector_type,
                    {"frontal", "profile_left", "profile_right", "frontal_or_profile"}),
          "detector_type");
  require(is_one_of(options.view,
                    {"rgb", "ir", "depth", "skeletal", "combo", "room_overview", "follow"}),
          "the view has its canonical name");
  require(!canonical_view(options.overlay_mode).empty(), "overlay_mode is a view word");
  require(options.no_camera || !options.layout_test, "a layout test has no camera");
}

void read(const std::vector<std::string>& words) {
  std::vector<const char*> arguments;
  arguments.reserve(words.size());
  for (const std::string& word : words) arguments.push_back(word.c_str());
  Options options;
  try {
    if (parse_args(static_cast<int>(arguments.size()), arguments.data(), options)) check(options);
  } catch (const std::invalid_argument&) {  // a value that is no number
  } catch (const std::out_of_range&) {      // a number that is too large
  }
}

}  // namespace
}  // namespace halcyra

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  std::cerr.rdbuf(nullptr);  // each unknown argument is named there
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  halcyra::read(halcyra::words_of(halcyra::text_of(data, size)));
  return 0;
}
