// Pictures of the rendered room's owner, for the demonstration to recognise him by.
#pragma once

#include <filesystem>

namespace halcyra {

// Writes grey face pictures into the folders front, left and right below `folder`, which are made
// where they are missing. None of them is taken from the story. Throws std::runtime_error when a
// picture cannot be written.
void write_owner_samples(const std::filesystem::path& folder);

}  // namespace halcyra
