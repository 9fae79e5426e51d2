// What the long runs on small frames are played from.
#pragma once

#include <filesystem>

#include "tests/e2e/recording.hpp"

namespace halcyra {

// In lockstep, over and over: an empty room, a face in pictures of two sizes, and frames that
// cannot be used.
Recording write_small_recording(const std::filesystem::path& folder);

// The face of that recording as the owner's samples.
void write_owner_samples(const std::filesystem::path& folder);

}  // namespace halcyra
