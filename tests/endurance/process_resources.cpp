#include "tests/endurance/process_resources.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace halcyra {
namespace {

namespace fs = std::filesystem;

// The number after `key` in the status file of the process.
std::optional<long> status_value(const fs::path& process, const std::string& key) {
  std::ifstream status(process / "status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind(key, 0) == 0) return std::stol(line.substr(key.size()));
  }
  return std::nullopt;
}

long entries(const fs::path& folder) {
  std::error_code gone;
  const fs::directory_iterator first(folder, gone);
  return gone ? 0 : static_cast<long>(std::distance(first, fs::directory_iterator()));
}

// Each thread has children of its own.
long children_of(const fs::path& process) {
  long count = 0;
  std::error_code gone;
  for (fs::directory_iterator thread(process / "task", gone), end; !gone && thread != end;
       thread.increment(gone)) {
    std::ifstream children(thread->path() / "children");
    count += std::distance(std::istream_iterator<std::string>(children), {});
  }
  return count;
}

}  // namespace

std::optional<ProcessResources> read_resources(pid_t process) {
  const fs::path folder = "/proc/" + std::to_string(process);
  const std::optional<long> resident = status_value(folder, "VmRSS:");
  const std::optional<long> threads = status_value(folder, "Threads:");
  if (!resident || !threads) return std::nullopt;
  return ProcessResources{*resident, entries(folder / "fd"), *threads, children_of(folder)};
}

}  // namespace halcyra
