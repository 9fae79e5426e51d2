// Dashboards that many tests expect.
#pragma once

#include <string>
#include <vector>

#include "tests/e2e/expected_dashboard.hpp"

namespace halcyra {

// Nobody in the room, in the readable window, Sonmere and systemctl without answers, once the
// view's mode has settled. `sensor_messages` are what the start of the sensor logged, newest first.
ExpectedDashboard empty_room_scene(const std::string& view,
                                   const std::vector<std::string>& sensor_messages);

// The same of a run with --no-camera.
ExpectedDashboard camera_less_scene(const std::string& view);

// The messages that a run logs before it opens the sensor, newest first.
std::vector<std::string> start_messages();

// Adds a message as the newest; the log keeps 11.
void log_message(ExpectedDashboard& scene, const std::string& message);

}  // namespace halcyra
