// Chooses the frames that a bad USB link loses or damages, the same ones in every run, and damages
// them.
#pragma once

#include <cstdint>

#include <libfreenect2/frame_listener.hpp>

namespace halcyra::virtual_kinect {

// Whether this frame is among the `percent` (0 to 100) of its stream that never arrive.
bool is_lost(libfreenect2::Frame::Type stream, std::uint64_t set, int percent);

// Whether it is among the `percent` (0 to 100) of its stream that arrive damaged. The choice is
// independent of the lost ones.
bool is_damaged(libfreenect2::Frame::Type stream, std::uint64_t set, int percent);

// Sets the frame's status to 1 and damages it in one of five ways, which take turns from set to
// set: no data, no width, no height, two bytes per pixel, arbitrary bytes in the lower half of the
// picture.
void damage(libfreenect2::Frame& frame, std::uint64_t set);

}  // namespace halcyra::virtual_kinect
