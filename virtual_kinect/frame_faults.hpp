// Loses and damages frames as a bad USB link does. Which ones is the same in every run.
#pragma once

#include <cstdint>

#include <libfreenect2/frame_listener.hpp>

namespace halcyra::virtual_kinect {

// Whether this frame is among the `percent` (0 to 100) of its stream that never arrive.
bool is_lost(libfreenect2::Frame::Type stream, std::uint64_t set, int percent);

// Whether it is among the `percent` (0 to 100) that arrive damaged, chosen apart from the lost
// ones.
bool is_damaged(libfreenect2::Frame::Type stream, std::uint64_t set, int percent);

// Damages the frame in one of five ways, which take turns from set to set: no data, no width, no
// height, two bytes per pixel, arbitrary bytes in the lower half of the picture. Its status is 1.
void damage(libfreenect2::Frame& frame, std::uint64_t set);

}  // namespace halcyra::virtual_kinect
