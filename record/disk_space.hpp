// Whether a disk has room for a recording.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "record/record_options.hpp"

namespace halcyra::record {

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20U;
constexpr std::uint64_t kFreeAtStart = 512 * kMebibyte;  // needed for a recording to begin
constexpr std::uint64_t kFreeToGoOn = 256 * kMebibyte;   // a recording leaves this free

// Bytes that users without privileges may still write below `folder`; nothing where the file system
// does not tell.
std::optional<std::uint64_t> free_bytes(const std::filesystem::path& folder);

// About how much a recording of the sensor's picture sizes at 30 sets a second takes; 0 without a
// limit of sets or seconds.
std::uint64_t expected_bytes(const RecordOptions& options);

// Why the recording should not begin with this much free, a clause; "" if it may.
std::string space_fault(std::optional<std::uint64_t> free, std::uint64_t expected);

// Why it should end, likewise.
std::string space_fault_on_the_way(std::optional<std::uint64_t> free);

// Megabytes of a million bytes, with one decimal below a hundred.
std::string in_megabytes(std::uint64_t bytes);

}  // namespace halcyra::record
