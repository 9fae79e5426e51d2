#include "app/run_state/event_log.hpp"

#include <chrono>
#include <cstddef>
#include <ctime>

#include "app/run_state/runtime_status.hpp"

namespace halcyra {
namespace {

constexpr std::size_t kEventLimit = 11;  // so many fit into the event panel of a large window

std::string local_time_text() {
  const std::time_t now = std::chrono::system_clock::to_time_t(
      std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()));
  std::tm local{};
  localtime_r(&now, &local);
  char text[16];
  const std::size_t length = std::strftime(text, sizeof text, "%H:%M:%S", &local);
  return std::string(text, length);
}

}  // namespace

void add_event(RuntimeStatus& status, const std::string& message) {
  status.events.push_front(local_time_text() + "  " + message);
  while (status.events.size() > kEventLimit) status.events.pop_back();
}

}  // namespace halcyra
