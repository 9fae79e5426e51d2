// Reads the owner's sample pictures from their folder.
#pragma once

#include <string>
#include <vector>

#include "face_pipeline/training_sample.hpp"

namespace halcyra {

// Appends every .png, .jpg, .jpeg and .pgm file in and below `folder` (in capitals, too), in path
// order, as a 160 x 160 grey sample. Files that OpenCV cannot decode are left out. Returns whether
// `samples` holds any in the end, but false for a missing folder. Throws
// std::filesystem::filesystem_error if the path is not a folder or a sub-folder cannot be read.
// OpenCV throws for a file whose header claims more than 2^30 pixels.
bool load_samples(const std::string& folder, std::vector<TrainingSample>& samples);

}  // namespace halcyra
