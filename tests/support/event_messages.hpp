// What a run has logged, without the times.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "app/run_state/runtime_status.hpp"

namespace halcyra {

// The messages of the event log, oldest first.
inline std::vector<std::string> event_messages(const RuntimeStatus& status) {
  constexpr std::size_t kTimeLength = 10;  // "HH:MM:SS" and two spaces
  std::vector<std::string> messages;
  for (auto line = status.events.rbegin(); line != status.events.rend(); ++line) {
    messages.push_back(line->substr(kTimeLength));
  }
  return messages;
}

}  // namespace halcyra
