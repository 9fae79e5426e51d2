#include "probes/shell_command.hpp"

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace halcyra {

std::string run_capture(const std::string& command) {
  std::string output;
  FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r");
  if (pipe == nullptr) return output;
  // fread, since reading lines with fgets would lose what follows a NUL byte.
  std::array<char, 256> buffer;
  while (const std::size_t count = fread(buffer.data(), 1, buffer.size(), pipe)) {
    output.append(buffer.data(), count);
  }
  pclose(pipe);
  return output;
}

void run_action(const std::string& command) {
  // Callers ask the service for its state afterwards, so the exit status is not needed.
  [[maybe_unused]] const int status = std::system((command + " >/dev/null 2>&1").c_str());
}

}  // namespace halcyra
