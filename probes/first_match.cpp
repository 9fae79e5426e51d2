#include "probes/first_match.hpp"

#include <re2/re2.h>

#include "probes/text.hpp"

namespace halcyra {

std::string first_match(const std::string& text, const re2::RE2& expression, std::string fallback) {
  re2::StringPiece group;
  if (!re2::RE2::PartialMatch(text, expression, &group)) return fallback;
  return trim(std::string(group.data(), group.size()));
}

}  // namespace halcyra
