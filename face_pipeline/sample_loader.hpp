// Reads the owner's sample pictures from their folder.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "face_pipeline/training_sample.hpp"

namespace halcyra {

// Every .png, .jpg, .jpeg and .pgm file in and below `folder` (in capitals, too), in path order.
// Throws std::filesystem::filesystem_error if the path is not a folder or a sub-folder cannot be
// read.
std::vector<std::filesystem::path> sample_files(const std::filesystem::path& folder);

// The picture in the file, 8-bit grey, in its own size; empty if OpenCV cannot decode it. OpenCV
// throws for a file whose header claims more than 2^30 pixels.
cv::Mat read_sample(const std::filesystem::path& file);

// The name of the folder that holds the file, given by its path from the samples folder; "flat" for
// a file in the samples folder itself.
std::string stage_of(const std::filesystem::path& relative);

// The 8-bit grey picture as a 160 x 160 sample. `relative` is its path from the samples folder. The
// pixels are shared if the picture has that size already.
TrainingSample make_sample(const cv::Mat& picture, const std::filesystem::path& relative);

// Appends the samples of all sample_files(folder); those that cannot be decoded are left out.
// Returns whether `samples` holds any in the end, but false for a missing folder. Throws as
// sample_files and read_sample do.
bool load_samples(const std::string& folder, std::vector<TrainingSample>& samples);

}  // namespace halcyra
