#include "enroll/report_text.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iomanip>
#include <locale>
#include <sstream>

namespace halcyra {
namespace {

bool is_continuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

// One character of UTF-8. Its size is 0 if the bytes are none.
struct Character {
  std::size_t size;
  std::uint32_t code;
};

// The number of bytes that a first byte announces; 0 if it cannot be the first.
std::size_t announced_size(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first < 0xE0) return 2;
  if (first >= 0xE0 && first < 0xF0) return 3;
  if (first >= 0xF0 && first < 0xF5) return 4;
  return 0;
}

Character character_at(const std::string& text, std::size_t at) {
  constexpr std::array<unsigned, 5> kFirstBits = {0, 0x7F, 0x1F, 0x0F, 0x07};
  constexpr std::array<std::uint32_t, 5> kLeastCode = {0, 0, 0x80, 0x800, 0x10000};
  const auto first = static_cast<unsigned char>(text[at]);
  const std::size_t size = announced_size(first);
  if (size == 0 || at + size > text.size()) return {0, 0};
  std::uint32_t code = first & kFirstBits[size];
  for (std::size_t i = at + 1; i < at + size; ++i) {
    if (!is_continuation(text[i])) return {0, 0};
    code = code << 6U | (static_cast<unsigned char>(text[i]) & 0x3FU);
  }
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < kLeastCode[size] || code > 0x10FFFF || surrogate) return {0, 0};
  return {size, code};
}

bool is_harmless(std::uint32_t code) {
  const bool control = code < 0x20 || (code >= 0x7F && code < 0xA0);
  const bool line_end = code == 0x2028 || code == 0x2029;
  const bool direction = code == 0x061C || code == 0x200E || code == 0x200F ||
                         (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
  return !control && !line_end && !direction;
}

}  // namespace

std::string printable(const std::string& text) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const Character character = character_at(text, at);
    if (character.size > 0 && is_harmless(character.code)) {
      result.append(text, at, character.size);
    } else {
      result += '?';
    }
    at += std::max<std::size_t>(character.size, 1);
  }
  return result;
}

std::size_t shown_width(const std::string& text) {
  return text.size() -
         static_cast<std::size_t>(std::count_if(text.begin(), text.end(), is_continuation));
}

std::string decimal_text(double value, int decimals) {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  stream << std::fixed << std::setprecision(decimals) << value;
  return stream.str();
}

}  // namespace halcyra
