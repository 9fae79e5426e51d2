#include "app/room_events.hpp"

#include "app/run_state/event_log.hpp"
#include "app/run_state/runtime_status.hpp"

namespace halcyra {
namespace {

std::string person_event(std::int32_t people, std::int32_t previous) {
  if (people == 0) return "No person visible";
  if (previous < 1) return "Person appeared: " + std::to_string(people);
  if (people < previous) return "Person disappeared";
  return "Multiple people visible";
}

void log_person_event(RuntimeStatus& status, RoomEventMemory& memory) {
  const std::int32_t people = status.room.people;
  if (people != memory.people) add_event(status, person_event(people, memory.people));
  memory.people = people;
}

// Unknown people are logged on every turn while the owner is not visible.
void log_owner_event(RuntimeStatus& status, RoomEventMemory& memory) {
  const RoomAwareness& room = status.room;
  if (room.owner_visible) {
    if (!memory.owner_visible) add_event(status, "Dorran visible");
  } else if (room.unknown_people > 0 && room.unknown_people >= room.people) {
    add_event(status, "Unknown person visible");
  }
  memory.owner_visible = room.owner_visible;
}

void log_view_mode_event(RuntimeStatus& status, RoomEventMemory& memory) {
  const std::string& mode = status.room.view_mode;
  if (mode == memory.view_mode) return;
  memory.view_mode = mode;
  if (mode == "follow") add_event(status, "Follow mode active: " + status.room.target);
  if (mode == "room_overview") add_event(status, "Room overview active");
  if (mode == "scan") add_event(status, "Wide room scan active");
}

void log_voice_event(RuntimeStatus& status, RoomEventMemory& memory) {
  const std::string& match = status.room.voice_match;
  if (match == memory.voice_match || match.find("no voice") != std::string::npos) return;
  memory.voice_match = match;
  add_event(status, match);
}

}  // namespace

void log_room_events(RuntimeStatus& status, RoomEventMemory& memory) {
  log_person_event(status, memory);
  log_owner_event(status, memory);
  log_view_mode_event(status, memory);
  log_voice_event(status, memory);
}

}  // namespace halcyra
