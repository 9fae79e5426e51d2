// Who is in the room and what the dashboard attends to, as of the latest turn.
#pragma once

#include <cstdint>
#include <string>

namespace halcyra {

struct RoomAwareness {
  std::int32_t people = 0;     // faces in the current frame
  std::int32_t faces = 0;      // the same count, for the dashboard's own row
  std::int32_t skeletons = 0;  // people tracked by skeleton; 0 without a tracker
  bool owner_visible = false;
  std::int32_t unknown_people = 0;
  std::string target = "none";
  std::string view_mode = "scan";  // "scan", "follow", "room_overview" or an operator's view
  std::string fallback = "face";   // "skeleton", "face" or "degraded"
  std::string reason = "no person detected";
  std::string voice_match = "no voice direction";
};

}  // namespace halcyra
