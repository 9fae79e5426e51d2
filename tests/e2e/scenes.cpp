#include "tests/e2e/scenes.hpp"

#include <algorithm>

#include "app/run_state/views.hpp"
#include "tests/e2e/desktop_run.hpp"

namespace halcyra {
namespace {

// The messages of an empty room once its mode has settled; "follow" is held back at first.
std::vector<std::string> mode_messages(const std::string& view) {
  if (view == "combo") {
    return {"Wide room scan active"};
  }
  if (view == "follow") {
    return {"Follow mode active: none", "Wide room scan active"};
  }
  if (view == "room_overview") {
    return {"Room overview active"};
  }
  return {};
}

}  // namespace

std::vector<std::string> start_messages() {
  return {"Recognition samples unavailable", "Voice and Corvane status refreshed",
          "Skeleton unavailable, face fallback active", "Control Center launched"};
}

ExpectedDashboard empty_room_scene(const std::string& view,
                                   const std::vector<std::string>& sensor_messages) {
  ExpectedDashboard scene;
  scene.options.width = kWidth;
  scene.options.height = kHeight;
  scene.options.font_scale = kFontScale;
  scene.options.view = view;
  scene.status.voice.mic_presence = "not present";

  RoomAwareness& room = scene.status.room;
  room.fallback = "degraded";
  room.view_mode = view == "combo" ? "scan" : view;
  room.reason = view == "combo" ? "no person detected; wide room scan active"
                                : "operator selected " + view_label(view) + "; no person detected";

  scene.messages = mode_messages(view);
  scene.messages.push_back("No person visible");
  for (const std::string& message : sensor_messages) scene.messages.push_back(message);
  for (const std::string& message : start_messages()) scene.messages.push_back(message);
  return scene;
}

ExpectedDashboard camera_less_scene(const std::string& view) {
  ExpectedDashboard scene = empty_room_scene(view, {"No-camera mode active"});
  scene.status.kinect_message = "no-camera mode requested";
  return scene;
}

void log_message(ExpectedDashboard& scene, const std::string& message) {
  scene.messages.insert(scene.messages.begin(), message);
  scene.messages.resize(std::min<std::size_t>(scene.messages.size(), 11));
}

}  // namespace halcyra
