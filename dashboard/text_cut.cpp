#include "dashboard/text_cut.hpp"

#include <sstream>

namespace halcyra {
namespace {

constexpr char kEllipsis[] = "...";
constexpr std::size_t kEllipsisLength = 3;

}  // namespace

std::string clipped(const std::string& text, std::size_t max_chars) {
  if (max_chars >= text.size()) return text;
  if (max_chars <= kEllipsisLength) return text.substr(0, max_chars);
  return text.substr(0, max_chars - kEllipsisLength) + kEllipsis;
}

std::vector<std::string> wrap(const std::string& text, std::size_t width) {
  std::vector<std::string> lines;
  std::istringstream words(text);
  std::string line;
  std::string word;
  while (words >> word) {
    if (!line.empty() && line.size() + 1 + word.size() > width) {
      lines.push_back(line);
      line.clear();
    }
    if (!line.empty()) line += ' ';
    line += word;
  }
  if (!line.empty()) lines.push_back(line);
  return lines;
}

}  // namespace halcyra
