// A head as one painted surface.
#pragma once

#include "virtual_kinect/room/looks.hpp"
#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

// In head coordinates (see HeadShape).
Surface make_head(const HeadLook& look);

}  // namespace halcyra::virtual_kinect::room
