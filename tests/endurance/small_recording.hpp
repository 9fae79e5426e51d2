// The recording for the long runs on small frames.
#pragma once

#include <filesystem>

#include "tests/e2e/recording.hpp"

namespace halcyra {

// Played in lockstep and in a loop: an empty room, a face in pictures of two sizes, and unusable
// frames.
Recording write_small_recording(const std::filesystem::path& folder);

// The face of that recording as the owner's samples.
void write_owner_samples(const std::filesystem::path& folder);

}  // namespace halcyra
