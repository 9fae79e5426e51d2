// Texts of reports: names that come from outside, and numbers.
#pragma once

#include <cstddef>
#include <string>

namespace halcyra {

// The text with a '?' for everything that could change a terminal's state or the order of what it
// shows: control characters, marks of writing direction, and bytes that are not UTF-8. All else
// stays.
std::string printable(const std::string& text);

// How many columns a terminal takes to show a printable text, if no character is a wide one: the
// number of its characters.
std::size_t shown_width(const std::string& text);

// The number with so many decimals, always with a decimal point whatever the locale.
std::string decimal_text(double value, int decimals);

}  // namespace halcyra
