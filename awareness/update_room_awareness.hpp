// Condenses the faces of a frame, the operator's view and the last voice direction into the
// room-awareness record.
#pragma once

#include <chrono>
#include <vector>

#include "app/run_state/options.hpp"
#include "awareness/mode_hold_back.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

struct RuntimeStatus;

// Rewrites every field of `status.room`; called once per turn. `frame_width` is the width in pixels
// of the image that the face boxes refer to, 0 while there is none. `hold` keeps the automatic
// modes from flickering; a run passes the same one every time. Cannot fail.
void update_room_awareness(RuntimeStatus& status, const std::vector<FaceInfo>& faces,
                           const Options& options, int frame_width, ModeHoldBack& hold,
                           std::chrono::steady_clock::time_point now);

}  // namespace halcyra
