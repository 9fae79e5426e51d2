// Reads what is in cascade files.
#pragma once

#include <optional>

#include <opencv2/core/persistence.hpp>

#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

// The cascade in a file with the layout "opencv-cascade-classifier", which OpenCV has read.
// OpenCV's classifier loads every cascade that this returns. Nothing for a file with anything else
// in it, and for cascades that the search does not cover: trees with several nodes, categorical
// splits, tilted features, features other than Haar's, weights that are not whole numbers, windows
// smaller than 3 x 3 pixels, and windows or features so large that their sums would not be exact.
std::optional<StumpCascade> read_stump_cascade(const cv::FileStorage& file);

}  // namespace halcyra::haar
