// The settings of one recording, as the command line gives them.
#pragma once

#include <cstdint>
#include <filesystem>

#include "record/recorded_set.hpp"

namespace halcyra::record {

enum class ColorFiles { kJpeg, kPng };

// Files are numbered with six digits, since they are played in the order of their names.
constexpr std::uint32_t kMostSets = 999'999;

struct RecordOptions {
  std::filesystem::path folder;
  std::uint32_t seconds = 0;  // 0: no limit
  std::uint32_t sets = kMostSets;
  bool sets_given = false;
  StreamChoice streams = {true, true, true};
  ColorFiles color = ColorFiles::kJpeg;
  int jpeg_quality = 95;   // 1 to 100
  bool anonymous = false;  // leaves the serial number out
};

}  // namespace halcyra::record
