// Makes text fit into a number of characters. Characters are counted as bytes.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace halcyra {

// The text itself when it fits, else its beginning, ending in "...". When `max_chars` is at most 3
// there is no room for the dots and the result is just the beginning.
std::string clipped(const std::string& text, std::size_t max_chars);

// The words of the text, separated by single blanks, in lines of at most `width` characters. A
// longer word gets a line of its own and is not split. A text without words gives no lines.
std::vector<std::string> wrap(const std::string& text, std::size_t width);

}  // namespace halcyra
