// Looking up values in texts with regular expressions.
#pragma once

#include <string>

namespace re2 {
class RE2;
}

namespace halcyra {

// The trimmed first group of the expression's first match, or `fallback` unchanged when the
// expression does not match or has no group.
std::string first_match(const std::string& text, const re2::RE2& expression, std::string fallback);

}  // namespace halcyra
