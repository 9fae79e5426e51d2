// Files that a run has written and may delete again.
#pragma once

#include <sys/types.h>

#include <ctime>
#include <filesystem>

namespace halcyra {

// A file and what tells it from any other that may get its name later.
struct WrittenFile {
  std::filesystem::path path;
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  std::timespec modified{};
};

// Describes the file as it is now. Call it when the file has just been written.
WrittenFile written_file(const std::filesystem::path& path);

// Deletes the file, unless it has been changed, replaced or deleted since. Returns whether it was
// deleted.
bool delete_if_unchanged(const WrittenFile& file);

}  // namespace halcyra
