// The input of a fuzzer as the texts it stands for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace halcyra {

inline std::string text_of(const std::uint8_t* data, std::size_t size) {
  return {data, data + size};
}

// Exactly `count` texts, divided by lines of four tildes. Texts that the input has no more of are
// empty; the last one takes what is left.
inline std::vector<std::string> texts_of(const std::uint8_t* data, std::size_t size,
                                         std::size_t count) {
  static const std::string kDivider = "\n~~~~\n";
  const std::string input = text_of(data, size);
  std::vector<std::string> texts;
  std::size_t begin = 0;
  while (texts.size() + 1 < count) {
    const std::size_t end = input.find(kDivider, begin);
    if (end == std::string::npos) break;
    texts.push_back(input.substr(begin, end - begin));
    begin = end + kDivider.size();
  }
  texts.push_back(input.substr(begin));
  texts.resize(count);
  return texts;
}

}  // namespace halcyra
