// Condenses the faces of a frame, the operator's view and the last voice direction into the
// room-awareness record.
#pragma once

#include <vector>

#include "app/options.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

struct RuntimeStatus;

// Rewrites every field of `status.room`; called once per turn. `frame_width` is the width in pixels
// of the image that the face boxes refer to, 0 while there is none. The hold-back of the automatic
// modes lives inside, for the whole process: one caller, one thread. Cannot fail.
void update_room_awareness(RuntimeStatus& status, const std::vector<FaceInfo>& faces,
                           const Options& options, int frame_width);

}  // namespace halcyra
