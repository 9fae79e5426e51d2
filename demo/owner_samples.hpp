// Pictures of the rendered room's owner, for the demonstration to recognise him by.
#pragma once

#include <filesystem>

namespace halcyra {

// Writes eight grey, square pictures of his face into each of the folders front, left and right
// below `folder`, and makes those folders where they are missing. None shows a moment of the story.
// Throws std::runtime_error when a picture cannot be written, and std::filesystem::filesystem_error
// when a folder cannot be made.
void write_owner_samples(const std::filesystem::path& folder);

}  // namespace halcyra
