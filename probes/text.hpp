// Reads values from the output of other programs. Texts may have any size and hold any bytes.
#pragma once

#include <string>

namespace halcyra {

// The text without spaces, tabs, line feeds and carriage returns at both ends.
std::string trim(std::string text);

// The number at the start of the text (leading white space skipped, the rest ignored, always with
// a decimal point whatever the locale), or NaN when there is none or it is out of a double's range.
double parse_double_or_nan(const std::string& text);

}  // namespace halcyra
