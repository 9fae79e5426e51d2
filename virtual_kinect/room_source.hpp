// The rendered room as a source of frames.
#pragma once

#include <cstdint>

#include "virtual_kinect/frame_source.hpp"
#include "virtual_kinect/room/renderer.hpp"

namespace halcyra::virtual_kinect {

// Renders every set when it is asked for; the same seed gives the same sets. Takes a second or so.
FrameSource open_room(std::uint32_t seed = room::kUsualSeed);

}  // namespace halcyra::virtual_kinect
