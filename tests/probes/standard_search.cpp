#include "tests/probes/standard_search.hpp"

#include <cstddef>
#include <map>
#include <regex>

namespace halcyra {
namespace {

// Compiling an expression takes longer than a search.
const std::regex& compiled(const std::string& expression) {
  static std::map<std::string, std::regex> known;
  const auto place = known.find(expression);
  if (place != known.end()) return place->second;
  return known.emplace(expression, std::regex(expression)).first->second;
}

}  // namespace

std::vector<std::string> standard_groups(const std::string& text, const std::string& expression) {
  std::smatch match;
  if (!std::regex_search(text, match, compiled(expression))) return {};
  std::vector<std::string> groups;
  for (std::size_t i = 1; i < match.size(); ++i) groups.push_back(match[i]);
  return groups;
}

std::string standard_first_match(const std::string& text, const std::string& expression,
                                 const std::string& fallback) {
  constexpr const char* kBlanks = " \t\n\r";
  const std::vector<std::string> groups = standard_groups(text, expression);
  if (groups.empty()) return fallback;
  const std::string& group = groups.front();
  const std::size_t first = group.find_first_not_of(kBlanks);
  if (first == std::string::npos) return "";
  return group.substr(first, group.find_last_not_of(kBlanks) + 1 - first);
}

}  // namespace halcyra
