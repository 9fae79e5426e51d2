// A file with the fuzzer's input for what only reads files. It never touches a disk.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "tests/fuzz/requirement.hpp"

namespace halcyra {

class MemoryFile {
 public:
  MemoryFile(const std::uint8_t* data, std::size_t size)
      : descriptor_(memfd_create("fuzzer-input", MFD_CLOEXEC)) {
    require(descriptor_ >= 0, "a file in memory can be made");
    const ssize_t written = write(descriptor_, data, size);
    require(written >= 0 && static_cast<std::size_t>(written) == size, "it takes the input");
  }
  explicit MemoryFile(const std::string& text)
      : MemoryFile(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()) {}
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { close(descriptor_); }

  // Each opening reads from the start.
  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

}  // namespace halcyra
