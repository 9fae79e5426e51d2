// One turn of the loop without the window, in three steps: observe the room, draw the dashboard,
// act on the key. Used by the program, the benchmarks and the tests.
#pragma once

#include <vector>

#include "app/control_center.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

// Waits up to a second for the next frame set, converts it and finds the faces. Then asks the
// services again if that is due, updates the room awareness and logs what changed. Returns the
// faces of this turn's colour frame, none without one. A timeout is told in the status sentences.
std::vector<FaceInfo> observe_room(ControlCenter& center);

// Draws the dashboard into `center.canvas`. `frame_options` are the run's options with the width
// and height, in pixels, to draw at. In a layout test the first canvas is also written to a file
// named after that size.
void render_dashboard(ControlCenter& center, const std::vector<FaceInfo>& faces,
                      const Options& frame_options);

// Carries out the command of the key, then checks the frame limit. With a limit and without running
// streams, every turn counts as a frame, also the one that a quit key ends. Returns false after the
// last turn.
bool finish_turn(ControlCenter& center, int key);

}  // namespace halcyra
