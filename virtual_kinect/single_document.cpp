#include "virtual_kinect/single_document.hpp"

#include <algorithm>
#include <cstddef>

namespace halcyra::virtual_kinect {

namespace {

constexpr std::string_view kStartMarker = "---";
constexpr std::string_view kEndMarker = "...";

bool begins_with(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

// `line` from its first character that is neither blank nor in a comment; empty if there is none.
std::string_view content_of(std::string_view line) {
  const std::size_t first = line.find_first_not_of(" \r");
  if (first == std::string_view::npos || line[first] == '#') return {};
  return line.substr(first);
}

bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

// Takes a stream line by line.
class DocumentWatch {
 public:
  // False if a second document or something else than a map begins in `line`, or the map ends
  // before its end marker.
  bool takes(std::string_view line) {
    const std::string_view content = content_of(line);
    if (content.empty()) return true;
    const auto column = static_cast<std::size_t>(content.data() - line.data());
    if (place_ == Place::kInBraces) return takes_in_braces(content);
    if (begins_with(content, kEndMarker)) return takes_end(content);
    if (place_ == Place::kInLines) return column >= column_;
    return place_ == Place::kBefore && takes_start(content, column);
  }

 private:
  enum class Place { kBefore, kInLines, kInBraces, kAfter };

  bool takes_start(std::string_view content, std::size_t column) {
    if (content[0] == '%') return true;
    if (!begins_with(content, kStartMarker)) return takes_map(content, column);
    const std::string_view rest = content_of(content.substr(kStartMarker.size()));
    return rest.empty() ||
           takes_map(rest, column + static_cast<std::size_t>(rest.data() - content.data()));
  }

  bool takes_map(std::string_view content, std::size_t column) {
    if (content[0] == '{') {
      place_ = Place::kInBraces;
      return takes_in_braces(content);
    }
    place_ = Place::kInLines;
    column_ = column;
    return is_letter(content[0]);
  }

  bool takes_in_braces(std::string_view content) {
    const std::size_t end = content.find('}');
    if (end == std::string_view::npos) return true;
    place_ = Place::kAfter;
    return content_of(content.substr(end + 1)).empty();
  }

  bool takes_end(std::string_view content) {
    place_ = Place::kAfter;
    return content_of(content.substr(kEndMarker.size())).empty();
  }

  Place place_ = Place::kBefore;
  std::size_t column_ = 0;  // of the first key of a map in lines
};

}  // namespace

bool is_single_document(std::string_view text) {
  DocumentWatch watch;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    if (!watch.takes(text.substr(0, end))) return false;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return true;
}

}  // namespace halcyra::virtual_kinect
