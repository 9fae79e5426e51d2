#include "record/whole_file.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace halcyra::record {
namespace {

namespace fs = std::filesystem;

std::string error_text(int error) { return std::generic_category().message(error); }

// The error number, 0 for none.
int write_all(int descriptor, const char* bytes, std::size_t size) {
  while (size > 0) {
    const ssize_t written = write(descriptor, bytes, size);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    bytes += written;
    size -= static_cast<std::size_t>(written);
  }
  return 0;
}

}  // namespace

fs::path draft_of(const fs::path& file) { return fs::path(file) += ".part"; }

std::string write_draft(const fs::path& file, const void* bytes, std::size_t size) {
  const fs::path draft = draft_of(file);
  const int descriptor = open(draft.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (descriptor < 0) return error_text(errno);
  int error = write_all(descriptor, static_cast<const char*>(bytes), size);
  // Network file systems report a full disk or quota only here.
  if (close(descriptor) != 0 && error == 0) error = errno;
  if (error == 0) return "";
  unlink(draft.c_str());
  return error_text(error);
}

std::string publish_draft(const fs::path& file) {
  std::error_code error;
  fs::rename(draft_of(file), file, error);
  return error ? error.message() : "";
}

}  // namespace halcyra::record
