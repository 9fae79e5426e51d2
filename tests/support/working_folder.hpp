// An empty folder that is the working folder while a test runs.
#pragma once

#include <filesystem>

#include "tests/support/temporary_folder.hpp"

namespace halcyra {

class WorkingFolder {
 public:
  WorkingFolder() : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(folder_.path());
  }
  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;
  ~WorkingFolder() { std::filesystem::current_path(before_); }

  const std::filesystem::path& path() const { return folder_.path(); }

 private:
  TemporaryFolder folder_;
  std::filesystem::path before_;
};

}  // namespace halcyra
