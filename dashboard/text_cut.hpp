// Makes texts fit a number of characters (bytes).
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace halcyra {

// The text itself when it fits, else its beginning with "..." as the last three characters; with
// no room for dots (max_chars 0 to 3) just its beginning.
std::string clipped(const std::string& text, std::size_t max_chars);

// The words of the text in lines of at most `width` characters; a longer word stands alone on its
// line. White space between words is folded to one blank. No lines for a blank text.
std::vector<std::string> wrap(const std::string& text, std::size_t width);

}  // namespace halcyra
