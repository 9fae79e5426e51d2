// Writes files that are there whole or not at all.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace halcyra::record {

// The name under which the file is written first. The virtual Kinect plays no files named so.
std::filesystem::path draft_of(const std::filesystem::path& file);

// Writes the draft of `file`. Returns why that failed, with the draft removed, or "".
std::string write_draft(const std::filesystem::path& file, const void* bytes, std::size_t size);

// Gives the draft the name of `file`, in place of an earlier `file`. Returns why that failed, or
// "".
std::string publish_draft(const std::filesystem::path& file);

}  // namespace halcyra::record
