// The rendered room as a source of frames.
#pragma once

#include <cstdint>

#include "virtual_kinect/frame_source.hpp"
#include "virtual_kinect/room/renderer.hpp"

namespace halcyra::virtual_kinect {

// Sets without end, each rendered when it is asked for. The same seed gives the same sets. Takes
// some tenths of a second.
FrameSource open_room(std::uint32_t seed = room::kUsualSeed);

}  // namespace halcyra::virtual_kinect
