// Copies frames out of the driver's hands, so that it gets its set back at once.
#pragma once

#include <libfreenect2/frame_listener_impl.h>

#include "record/recorded_set.hpp"

namespace halcyra::record {

// Fills the three frames of `copy`. The pixels are copied only for the chosen streams, into the
// memory that `copy` already has where the size is the same. A frame that is missing, has no data
// or cannot be a picture (no width or height, a side of more than 65500 pixels, more than 2^26
// pixels, another number of bytes per pixel than its stream has) gets the layout kNone.
void copy_set(const libfreenect2::FrameMap& frames, const StreamChoice& streams, RecordedSet& copy);

}  // namespace halcyra::record
