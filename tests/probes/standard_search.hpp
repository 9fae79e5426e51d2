// Searches with the standard library's regular expressions, the reference for the probes. Their
// engine recurses for every character, so this is for small texts.
#pragma once

#include <string>
#include <vector>

namespace halcyra {

// The groups of the first match of an ECMAScript expression; none when it does not match.
std::vector<std::string> standard_groups(const std::string& text, const std::string& expression);

// The first group without blanks at its ends, or `fallback` when the expression does not match.
std::string standard_first_match(const std::string& text, const std::string& expression,
                                 const std::string& fallback);

}  // namespace halcyra
