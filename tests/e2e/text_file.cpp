#include "tests/e2e/text_file.hpp"

#include <fstream>
#include <iterator>

namespace halcyra {

std::string read_text(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void write_text(const std::filesystem::path& file, const std::string& text) {
  std::filesystem::create_directories(file.parent_path());
  std::filesystem::path draft = file;
  draft += ".draft";
  std::ofstream(draft, std::ios::binary) << text;
  std::filesystem::rename(draft, file);
}

}  // namespace halcyra
