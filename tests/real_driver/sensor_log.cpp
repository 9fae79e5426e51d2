#include "tests/real_driver/sensor_log.hpp"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace halcyra {

SensorCounts counts_of(const std::filesystem::path& log) {
  SensorCounts counts;
  std::ifstream lines(log);
  for (std::string line; std::getline(lines, line);) {
    if (line.find(" summary ") == std::string::npos) continue;
    std::istringstream words(line);
    for (std::string word; words >> word;) {
      const std::size_t equals = word.find('=');
      if (equals == std::string::npos) continue;
      char* rest = nullptr;
      long& count = counts[word.substr(0, equals)];
      count += std::strtol(word.c_str() + equals + 1, &rest, 10);
      // Of colour / of depth.
      if (*rest == '/') count += std::strtol(rest + 1, nullptr, 10);
    }
  }
  return counts;
}

SensorCounts leftovers_of(const std::filesystem::path& log) {
  SensorCounts counts = counts_of(log);
  // Without a sensor there are no counts of transfers. A log without its summary is not clean.
  if (counts.count("handles_open") == 0) return {};
  SensorCounts result = nothing_left();
  for (auto& [name, count] : result) count = counts[name];
  return result;
}

SensorCounts nothing_left() {
  return {{"contexts", 0}, {"handles_open", 0}, {"in_flight", 0},
          {"lists", 0},    {"misuse", 0},       {"transfers_allocated", 0}};
}

int lines_with(const std::filesystem::path& log, const std::string& text) {
  int count = 0;
  std::ifstream lines(log);
  for (std::string line; std::getline(lines, line);) {
    count += line.find(text) != std::string::npos ? 1 : 0;
  }
  return count;
}

}  // namespace halcyra
