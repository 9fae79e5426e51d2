#include "tests/e2e/exit_summary_line.hpp"

#include <sstream>

namespace halcyra {
namespace {

constexpr char kStart[] = "Halcyra Control Center exit: ";

}  // namespace

std::string summary_line(const std::string& output) {
  std::size_t start = output.rfind(kStart);
  // It must be a line of its own.
  if (start == std::string::npos || (start > 0 && output[start - 1] != '\n')) return "";
  const std::size_t end = output.find('\n', start);
  return end == std::string::npos ? "" : output.substr(start, end + 1 - start);
}

std::map<std::string, std::string> summary_values(const std::string& output) {
  const std::string line = summary_line(output);
  std::map<std::string, std::string> values;
  if (line.empty()) return values;
  std::istringstream pieces(line.substr(sizeof(kStart) - 1));
  for (std::string piece; pieces >> piece;) {
    const std::size_t equals = piece.find('=');
    if (equals != std::string::npos) values[piece.substr(0, equals)] = piece.substr(equals + 1);
  }
  return values;
}

}  // namespace halcyra
