// Files that appear whole or not at all, and that only their owner can read.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace halcyra {

// Writes the bytes to a new file in the folder, with mode 0600, and waits until they are on the
// disk. Its name does not end like a picture's, so nobody takes it for a sample; the caller renames
// it. Returns its path; nothing, with errno set, if it cannot be written.
std::optional<std::filesystem::path> write_unfinished(const std::filesystem::path& folder,
                                                      const std::vector<unsigned char>& bytes);

}  // namespace halcyra
