// The samples that are in the folder before any is taken.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "enroll/sample_distances.hpp"

namespace halcyra {

// Adds them to `samples`, and their paths from the folder to `names`, in path order. Files that
// cannot be decoded are left out; the report names them. False, with a sentence in `complaint`, if
// the folder or one in it cannot be read.
bool load_present_samples(const std::filesystem::path& folder, SampleDistances& samples,
                          std::vector<std::string>& names, std::string& complaint);

}  // namespace halcyra
