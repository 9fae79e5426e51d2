#include "awareness/update_room_awareness.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "app/run_state/runtime_status.hpp"
#include "app/run_state/views.hpp"
#include "awareness/direction_zone.hpp"
#include "awareness/voice_direction.hpp"
#include "face_pipeline/person_identity.hpp"

namespace halcyra {
namespace {

using Faces = std::vector<FaceInfo>;

// Half of the horizontal angle that the picture is assumed to span.
constexpr double kHalfFieldDegrees = 55.0;
constexpr double kMatchDegrees = 18.0;

bool is_owner(const FaceInfo& face) { return is_owner_label(face.label); }

void count_people(RoomAwareness& room, const Faces& faces, bool skeleton_available) {
  const auto count = static_cast<std::int32_t>(faces.size());
  room.people = count;
  room.faces = count;
  room.skeletons = skeleton_available ? count : 0;
  room.owner_visible = std::any_of(faces.begin(), faces.end(), is_owner);
  room.unknown_people = room.owner_visible ? count - 1 : count;
  room.fallback = count > 0 ? "face" : "degraded";
  if (skeleton_available) room.fallback = "skeleton";
}

std::string followed_person(const Faces& faces) {
  const auto owner = std::find_if(faces.begin(), faces.end(), is_owner);
  return person_display_name(owner == faces.end() ? faces.front() : *owner);
}

void attend_nobody(RoomAwareness& room, const std::string& requested) {
  const bool scan = requested == "combo";
  room.target = "none";
  room.view_mode = scan ? "scan" : requested;
  room.reason = scan ? "no person detected; wide room scan active"
                     : "operator selected " + view_label(requested) + "; no person detected";
}

void attend_room(RoomAwareness& room) {
  room.target = room.owner_visible ? "Dorran" : "all visible people";
  room.view_mode = "room_overview";
  room.reason = room.people < 2 ? "room overview requested"
                                : "multiple people visible; keeping wide overview";
}

void attend_operator_view(RoomAwareness& room, const std::string& requested) {
  room.target = room.owner_visible ? "Dorran" : "visible person";
  room.view_mode = requested;
  room.reason = "operator selected " + view_label(requested) + " view";
}

void attend_one_person(RoomAwareness& room, const Faces& faces, bool skeleton_available) {
  room.target = followed_person(faces);
  room.view_mode = "follow";
  room.reason = skeleton_available ? "following skeleton/person center"
                                   : "following face center because skeleton is unavailable";
}

// Sets mode, target and reason from the faces and the requested view, before any hold-back.
void choose_mode(RoomAwareness& room, const Faces& faces, const std::string& requested,
                 bool skeleton_available) {
  if (faces.empty()) {
    attend_nobody(room, requested);
  } else if (faces.size() >= 2 || requested == "room_overview") {
    attend_room(room);
  } else if (requested != "follow" && requested != "combo") {
    attend_operator_view(room, requested);
  } else {
    attend_one_person(room, faces, skeleton_available);
  }
}

// While a mode is held back, the target is already that of the mode to come.
void hold_mode_back(RoomAwareness& room, const std::string& view, ModeHoldBack& hold,
                    std::chrono::steady_clock::time_point now) {
  if (admit_mode(hold, view, room.view_mode, now)) return;
  room.reason =
      "tracking uncertain; holding " + hold.held_mode + " before switching to " + room.view_mode;
  room.view_mode = hold.held_mode;
}

// Degrees from the middle of the picture to the middle of the face, negative to the left.
double face_angle(const FaceInfo& face, int frame_width) {
  if (frame_width < 1) return 0.0;
  const double center = face.box.x + face.box.width * 0.5;
  return (center / frame_width - 0.5) * 2 * kHalfFieldDegrees;
}

std::string match_voice(const VoiceDirection& voice, const Faces& faces, int frame_width) {
  if (!voice.has_angle) return "no voice direction";
  const std::string zone = direction_zone(voice.angle);
  if (!voice.trusted) return "low confidence " + zone;
  const FaceInfo* speaker = nullptr;
  for (const FaceInfo& face : faces) {
    if (!(std::abs(face_angle(face, frame_width) - voice.angle) <= kMatchDegrees)) continue;
    if (speaker != nullptr) return "ambiguous speaker " + zone;
    speaker = &face;
  }
  if (speaker == nullptr) return "unmatched voice " + zone;
  return "voice direction matched " + person_display_name(*speaker);
}

}  // namespace

void update_room_awareness(RuntimeStatus& status, const Faces& faces, const Options& options,
                           int frame_width, ModeHoldBack& hold,
                           std::chrono::steady_clock::time_point now) {
  RoomAwareness& room = status.room;
  const std::string requested = options.view.empty() ? "combo" : options.view;
  count_people(room, faces, status.skeleton_available);
  choose_mode(room, faces, requested, status.skeleton_available);
  hold_mode_back(room, options.view, hold, now);
  room.voice_match = match_voice(voice_direction(status.voice), faces, frame_width);
}

}  // namespace halcyra
