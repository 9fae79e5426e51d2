// Reads whole files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace halcyra::virtual_kinect {

// Nothing where `file` cannot be read. Folders and pipes count as that.
std::optional<std::string> read_file(const std::filesystem::path& file);

}  // namespace halcyra::virtual_kinect
