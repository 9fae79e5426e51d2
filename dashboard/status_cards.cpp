#include "dashboard/status_cards.hpp"

#include "app/run_state/runtime_status.hpp"

namespace halcyra {
namespace {

std::string ok_or(bool ok, const char* otherwise) { return ok ? "OK" : otherwise; }

StatusCard kinect_card(const RuntimeStatus& status) {
  const bool live = status.rgb_ok;
  return {"Kinect Camera", ok_or(status.kinect_connected && live, "unavailable"),
          status.kinect_message,
          live ? "RGB preview is live." : "Camera preview cannot be trusted right now.",
          live ? "Continue finite validation runs."
               : "Check USB, permissions, or close other Kinect clients."};
}

StatusCard skeleton_card(const RuntimeStatus& status) {
  const bool tracking = status.skeleton_available;
  return {"Skeleton Tracking", ok_or(tracking, "degraded"),
          tracking ? "Skeleton/person joints available." : status.skeleton_message,
          tracking ? "Normal overlay can use skeletons."
                   : "Control Center uses face fallback for room awareness.",
          tracking ? "Validate joint stability."
                   : "Integrate a real Kinect skeleton tracker before enabling skeleton mode."};
}

StatusCard face_fallback_card(const RuntimeStatus& status) {
  const bool visible = status.room.faces > 0;
  return {
      "Face Fallback", ok_or(visible, status.rgb_ok ? "fallback" : "unavailable"),
      visible ? "Face fallback has visible targets." : "No fallback face target currently visible.",
      "Used only because skeleton tracking is unavailable.",
      "Keep lighting even; do not treat fallback as security."};
}

StatusCard face_recognition_card(const RuntimeStatus& status) {
  const bool visible = status.room.owner_visible;
  return {
      "Face Recognition", ok_or(visible, "degraded"),
      visible ? "Dorran visible in current room state." : "No current Dorran recognition result.",
      "Owner identity remains a convenience signal only.", "Do not use for access control."};
}

StatusCard room_card(const RuntimeStatus& status) {
  return {"Room Awareness", ok_or(status.room.people > 0, "degraded"), status.room.reason,
          "View mode adapts between scan, follow, and overview.",
          "Use room overview when multiple people are present."};
}

StatusCard audio_card(const RuntimeStatus& status) {
  const bool running = status.voice.live_processing.find("running") != std::string::npos;
  return {"Audio Direction", ok_or(running, "fallback"), status.room.voice_match,
          "Direction guides attention only, not trust or identity.",
          "Restart Sonmere if direction data is stale."};
}

StatusCard depth_card(const RuntimeStatus& status) {
  return {"Depth", ok_or(status.depth_ok, "degraded"),
          status.depth_ok ? "Depth stream embedded." : status.depth_message,
          "Distance estimates are unavailable in this pass.",
          "Use Protonect path until embedded depth is added."};
}

StatusCard infrared_card(const RuntimeStatus& status) {
  return {"IR", ok_or(status.ir_ok, "degraded"),
          status.ir_ok ? "IR stream embedded." : status.ir_message,
          "Low-light preview is unavailable in this pass.",
          "Use Protonect path until embedded IR is added."};
}

StatusCard package_card() {
  return {"Package Runtime", "OK", "Runtime binaries and wrappers are local.",
          "Package can be tested before Corvane transfer.",
          "Run staged package test after rebuild."};
}

}  // namespace

std::vector<StatusCard> status_cards(const RuntimeStatus& status) {
  return {kinect_card(status),
          skeleton_card(status),
          face_fallback_card(status),
          face_recognition_card(status),
          room_card(status),
          audio_card(status),
          depth_card(status),
          infrared_card(status),
          package_card()};
}

}  // namespace halcyra
