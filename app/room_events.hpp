// Logs what changes in the room from one turn to the next.
#pragma once

#include <cstdint>
#include <string>

namespace halcyra {

struct RuntimeStatus;

// What the latest turn saw, and the last voice sentence that was logged.
struct RoomEventMemory {
  std::int32_t people = -1;  // before the first turn
  bool owner_visible = false;
  std::string view_mode;
  std::string voice_match;
};

// Logs the person, owner, view-mode and voice events of this turn, in this order, by comparing
// `status.room` with the memory, and updates the memory.
void log_room_events(RuntimeStatus& status, RoomEventMemory& memory);

}  // namespace halcyra
