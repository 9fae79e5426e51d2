// Whole files as texts of any bytes.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace halcyra {

// "" when there is no such file.
inline std::string read_text(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// Puts the text there in one step, so that another process reads the old or the new text whole.
// Makes the folder where needed.
inline void write_text(const std::filesystem::path& file, const std::string& text) {
  std::filesystem::create_directories(file.parent_path());
  std::filesystem::path draft = file;
  draft += ".draft";
  std::ofstream(draft, std::ios::binary) << text;
  std::filesystem::rename(draft, file);
}

}  // namespace halcyra
