// Makes the frames that listeners receive.
#pragma once

#include <memory>

#include <libfreenect2/frame_listener.hpp>

#include "virtual_kinect/frame_source.hpp"

namespace halcyra::virtual_kinect {

// A frame with the image's pixels. It has a copy of them unless they are given away, because its
// owner may write to them. Its data is null where the image has none. The frame keeps `hold` for as
// long as it lives.
std::unique_ptr<libfreenect2::Frame> make_frame(const StreamImage& image,
                                                std::shared_ptr<const void> hold);

}  // namespace halcyra::virtual_kinect
