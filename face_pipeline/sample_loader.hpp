// Reads the owner's sample pictures from their folder.
#pragma once

#include <string>
#include <vector>

#include "face_pipeline/training_sample.hpp"

namespace halcyra {

// Appends every .png, .jpg, .jpeg and .pgm file below `folder`, in path order, as 160 x 160 grey
// samples. Returns whether `samples` holds any at the end; a missing folder gives false. Files that
// are no pictures are left out. A path that is no folder, or a sub-folder that cannot be read,
// throws std::filesystem::filesystem_error; a file whose head claims more than 2^30 pixels makes
// OpenCV throw.
bool load_samples(const std::string& folder, std::vector<TrainingSample>& samples);

}  // namespace halcyra
