#include "enroll/written_file.hpp"

#include <sys/stat.h>
#include <unistd.h>

namespace halcyra {

// A file that cannot be examined gets an inode that no file has.
WrittenFile written_file(const std::filesystem::path& path) {
  struct stat now {};
  if (::lstat(path.c_str(), &now) != 0) return {path};
  return {path, now.st_dev, now.st_ino, now.st_size, now.st_mtim};
}

bool delete_if_unchanged(const WrittenFile& file) {
  const WrittenFile now = written_file(file.path);
  const bool unchanged = now.inode != 0 && now.device == file.device && now.inode == file.inode &&
                         now.size == file.size && now.modified.tv_sec == file.modified.tv_sec &&
                         now.modified.tv_nsec == file.modified.tv_nsec;
  return unchanged && ::unlink(file.path.c_str()) == 0;
}

}  // namespace halcyra
