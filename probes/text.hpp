// Reading values out of what other programs wrote. Texts may be of any size and hold any bytes.
#pragma once

#include <string>

namespace re2 {
class RE2;
}

namespace halcyra {

// The text without spaces, tabs, line feeds and carriage returns at both ends.
std::string trim(std::string text);

// The number at the start of the text (leading white space skipped, the rest ignored, always with
// a decimal point whatever the locale), or NaN when there is none or it is out of a double's range.
double parse_double_or_nan(const std::string& text);

// The trimmed first group of the expression's first match, or `fallback` unchanged when the
// expression does not match or has no group.
std::string first_match(const std::string& text, const re2::RE2& expression, std::string fallback);

}  // namespace halcyra
