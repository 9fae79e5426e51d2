// Cutting and wrapping texts. The input's first byte is the number of characters, the rest the
// text.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "dashboard/text_cut.hpp"
#include "tests/fuzz/requirement.hpp"
#include "tests/fuzz/text_input.hpp"

namespace halcyra {
namespace {

void check_clipped(const std::string& text, std::size_t most) {
  const std::string cut = clipped(text, most);
  if (text.size() <= most) {
    require(cut == text, "a text that fits is kept");
    return;
  }
  require(cut.size() == most, "a cut text takes all the room");
  const std::size_t kept = most > 3 ? most - 3 : most;
  require(cut.compare(0, kept, text, 0, kept) == 0, "a cut text begins as the text does");
  require(most <= 3 || cut.substr(kept) == "...", "a cut text ends in dots");
}

std::vector<std::string> words_of(const std::string& text, const char* white_space) {
  std::vector<std::string> words;
  std::size_t begin = text.find_first_not_of(white_space);
  while (begin != std::string::npos) {
    const std::size_t end = text.find_first_of(white_space, begin);
    words.push_back(text.substr(begin, end - begin));
    begin = text.find_first_not_of(white_space, end);
  }
  return words;
}

void check_wrapped(const std::string& text, std::size_t width) {
  std::vector<std::string> words;
  for (const std::string& line : wrap(text, width)) {
    const std::vector<std::string> on_line = words_of(line, " ");
    require(!on_line.empty(), "no line is blank");
    require(line.size() <= width || on_line.size() == 1, "only a long word leaves the width");
    words.insert(words.end(), on_line.begin(), on_line.end());
  }
  require(words == words_of(text, " \t\n\v\f\r"), "the lines hold the words of the text");
}

}  // namespace
}  // namespace halcyra

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string text = halcyra::text_of(data + 1, size - 1);
  halcyra::check_clipped(text, data[0]);
  halcyra::check_wrapped(text, data[0]);
  return 0;
}
