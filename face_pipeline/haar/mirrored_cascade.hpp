// Mirrors a cascade, so that it finds in a picture what the original finds in the mirror image.
#pragma once

#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

// Every feature mirrored from left to right; thresholds and votes stay.
StumpCascade mirrored(StumpCascade cascade);

}  // namespace halcyra::haar
