// Whole files as texts.
#pragma once

#include <filesystem>
#include <string>

namespace halcyra {

// "" when there is no such file.
std::string read_text(const std::filesystem::path& file);

// Puts the text there in one step, so that another process reads the old or the new text whole.
// Makes the folder where needed.
void write_text(const std::filesystem::path& file, const std::string& text);

}  // namespace halcyra
