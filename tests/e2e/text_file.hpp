// Whole files as texts.
#pragma once

#include <filesystem>
#include <string>

namespace halcyra {

// "" when there is no such file.
std::string read_text(const std::filesystem::path& file);

// Replaces the file in one step, so that another process reads either the old or the new text.
// Makes the folder if needed.
void write_text(const std::filesystem::path& file, const std::string& text);

}  // namespace halcyra
