// Reads cascade files.
#pragma once

#include <optional>
#include <string>

#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

// The cascade in an XML, YAML or JSON file with the layout "opencv-cascade-classifier". Nothing for
// a file with anything else in it, and for cascades that the search does not cover: trees with
// several nodes, categorical splits, tilted features, features other than Haar's, weights that are
// not whole numbers, windows smaller than 3 x 3 pixels, and windows or features so large that their
// sums would not be exact. OpenCV throws where a file breaks the rules of its format.
std::optional<StumpCascade> read_stump_cascade(const std::string& path);

}  // namespace halcyra::haar
