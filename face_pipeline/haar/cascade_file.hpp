// Which cascade a file holds.
#pragma once

#include <optional>
#include <string>

#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

// The cascade in an XML or YAML file of the layout "opencv-cascade-classifier". Nothing for every
// other file and for cascades that our search does not cover: trees with several nodes, tilted
// features, other features than Haar's, weights that are no whole numbers, and windows so large
// that a sum over one would not be exact in single precision.
std::optional<StumpCascade> read_stump_cascade(const std::string& path);

}  // namespace halcyra::haar
