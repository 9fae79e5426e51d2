// One turn of the loop but for the window, in three steps: see the room, draw the dashboard, act on
// the key. The program, the benchmarks and the tests take their turns here.
#pragma once

#include <vector>

#include "app/control_center.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

// Takes the next frame set, waiting up to a second for it, converts it and finds the faces; then
// renews the services when they are due and the room awareness, and logs what changed. Returns the
// faces of this turn's colour frame, none without one. A missing frame set is a status sentence.
std::vector<FaceInfo> observe_room(ControlCenter& center);

// Draws the dashboard into `center.canvas`. `frame_options` are the run's options with the size
// to draw at. In a layout test the first canvas is also written to a file named after that size.
void render_dashboard(ControlCenter& center, const std::vector<FaceInfo>& faces,
                      const Options& frame_options);

// Carries out the command of the key, then checks the frame limit; without running streams the
// turns themselves count as frames. Returns false when this was the last turn.
bool finish_turn(ControlCenter& center, int key);

}  // namespace halcyra
