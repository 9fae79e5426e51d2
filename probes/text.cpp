#include "probes/text.hpp"

#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <limits>

namespace halcyra {
namespace {

constexpr const char* kBlanks = " \t\n\r";

// Numbers have a decimal point even after the window system has switched the process to the user's
// locale. Never freed.
locale_t plain_locale() {
  static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
  return locale;
}

}  // namespace

std::string trim(std::string text) {
  const std::size_t last = text.find_last_not_of(kBlanks);
  text.erase(last == std::string::npos ? 0 : last + 1);
  text.erase(0, text.find_first_not_of(kBlanks));
  return text;
}

double parse_double_or_nan(const std::string& text) {
  const char* begin = text.c_str();
  char* end = nullptr;
  errno = 0;
  const double value = strtod_l(begin, &end, plain_locale());
  if (end == begin || errno == ERANGE) return std::numeric_limits<double>::quiet_NaN();
  return value;
}

}  // namespace halcyra
