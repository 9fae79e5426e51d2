#include "enroll/private_file.hpp"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace halcyra {
namespace {

namespace fs = std::filesystem;

const std::string kUnfinished = ".unfinished";

// False with errno set.
bool write_all(int file, const std::vector<unsigned char>& bytes) {
  std::size_t written = 0;
  while (written < bytes.size()) {
    const ssize_t count = ::write(file, bytes.data() + written, bytes.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    written += static_cast<std::size_t>(count);
  }
  return ::fsync(file) == 0;
}

}  // namespace

std::optional<fs::path> write_unfinished(const fs::path& folder,
                                         const std::vector<unsigned char>& bytes) {
  std::string path = folder / ("XXXXXX" + kUnfinished);
  const int file = ::mkostemps(path.data(), static_cast<int>(kUnfinished.size()), O_CLOEXEC);
  if (file < 0) return std::nullopt;
  const bool whole = write_all(file, bytes);
  const int reason = errno;
  ::close(file);
  if (whole) return path;
  ::unlink(path.c_str());
  errno = reason;
  return std::nullopt;
}

}  // namespace halcyra
