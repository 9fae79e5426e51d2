#include "virtual_kinect/file_bytes.hpp"

#include <fstream>
#include <system_error>

namespace halcyra::virtual_kinect {

std::optional<std::string> read_file(const std::filesystem::path& file) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  if (error) {
    return std::nullopt;  // for a pipe, too: opening one would wait for its writer
  }
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return std::nullopt;
  std::string bytes(size, '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (stream.bad()) return std::nullopt;
  bytes.resize(static_cast<std::size_t>(stream.gcount()));  // the file may have shrunk meanwhile
  return bytes;
}

}  // namespace halcyra::virtual_kinect
