#include "record/disk_space.hpp"

#include <sys/statvfs.h>

#include <cstdio>

namespace halcyra::record {
namespace {

constexpr std::uint64_t kSensorPace = 30;

// Bytes of one file, measured in furnished rooms and rounded: JPEG files at the default quality,
// infrared and depth as the real driver delivers them, with fractions.
constexpr std::uint64_t kJpegBytes = 600'000;
constexpr std::uint64_t kPngBytes = 3'500'000;
constexpr std::uint64_t kFloatBytes = 870'000;

}  // namespace

std::optional<std::uint64_t> free_bytes(const std::filesystem::path& folder) {
  struct statvfs disk {};
  if (statvfs(folder.c_str(), &disk) != 0) return std::nullopt;
  return std::uint64_t{disk.f_bavail} * disk.f_frsize;
}

std::uint64_t expected_bytes(const RecordOptions& options) {
  std::uint64_t set = 0;
  if (options.streams[kColor]) set += options.color == ColorFiles::kPng ? kPngBytes : kJpegBytes;
  if (options.streams[kInfrared]) set += kFloatBytes;
  if (options.streams[kDepth]) set += kFloatBytes;
  if (options.seconds > 0) return set * options.seconds * kSensorPace;
  return options.sets_given ? set * options.sets : 0;
}

std::string space_fault(std::optional<std::uint64_t> free, std::uint64_t expected) {
  if (!free) return "";
  if (*free < kFreeAtStart) {
    return "only " + in_megabytes(*free) + " are free, and a recording needs at least " +
           in_megabytes(kFreeAtStart);
  }
  if (*free < expected + kFreeToGoOn) {
    return "only " + in_megabytes(*free) + " are free, and this recording may take " +
           in_megabytes(expected);
  }
  return "";
}

std::string space_fault_on_the_way(std::optional<std::uint64_t> free) {
  if (!free || *free >= kFreeToGoOn) return "";
  return "the disk is nearly full: only " + in_megabytes(*free) + " are free";
}

std::string in_megabytes(std::uint64_t bytes) {
  constexpr double kMillion = 1e6;
  const double megabytes = static_cast<double>(bytes) / kMillion;
  char text[32];
  std::snprintf(text, sizeof(text), megabytes < 100.0 ? "%.1f MB" : "%.0f MB", megabytes);
  return text;
}

}  // namespace halcyra::record
