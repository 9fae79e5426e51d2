// What a running recording says about itself.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>

namespace halcyra::record {

struct RecordingCounts {
  std::uint32_t sets = 0;  // written
  double seconds = 0.0;    // between the first set and the last
  std::uint64_t bytes = 0;
  std::uint64_t dropped = 0;  // taken, but there was no place for them
  std::uint64_t missed = 0;   // skipped by the driver itself
  std::optional<std::uint64_t> free_bytes;
};

// "12 sets, 30.0 a second, 8.1 MB, 0 dropped, 0 missed, 52000 MB free"; the last only where it is
// known.
std::string progress_text(const RecordingCounts& counts);

// One sentence for the end, in one line.
std::string summary_text(const RecordingCounts& counts, const std::filesystem::path& folder);

// Shows the progress: on a terminal in one line, once a second; elsewhere in a new line each five
// seconds.
class ProgressReport {
 public:
  using Clock = std::chrono::steady_clock;

  ProgressReport(std::ostream& out, bool is_terminal, Clock::time_point start);

  void show(const RecordingCounts& counts, Clock::time_point now);

  // Ends the line, so that what follows stands below it.
  void end();

 private:
  std::ostream& out_;
  const bool is_terminal_;
  const Clock::duration period_;
  Clock::time_point shown_;
  bool line_is_open_ = false;
};

}  // namespace halcyra::record
