#include "record/progress.hpp"

#include <cstdio>

#include "record/disk_space.hpp"

namespace halcyra::record {
namespace {

// One decimal; 0 where there are too few sets to tell.
std::string pace_text(const RecordingCounts& counts) {
  const bool known = counts.sets > 1 && counts.seconds > 0.0;
  char text[32];
  std::snprintf(text, sizeof(text), "%.1f", known ? (counts.sets - 1) / counts.seconds : 0.0);
  return text;
}

std::string sets_text(std::uint32_t sets) {
  return std::to_string(sets) + (sets == 1 ? " set" : " sets");
}

std::string losses_text(const RecordingCounts& counts) {
  return std::to_string(counts.dropped) + " dropped, " + std::to_string(counts.missed) + " missed";
}

}  // namespace

std::string progress_text(const RecordingCounts& counts) {
  std::string text = sets_text(counts.sets) + ", " + pace_text(counts) + " a second, " +
                     in_megabytes(counts.bytes) + ", " + losses_text(counts);
  if (counts.free_bytes) text += ", " + in_megabytes(*counts.free_bytes) + " free";
  return text;
}

std::string summary_text(const RecordingCounts& counts, const std::filesystem::path& folder) {
  char seconds[32];
  std::snprintf(seconds, sizeof(seconds), "%.1f", counts.seconds);
  return "Recorded " + sets_text(counts.sets) + " in " + seconds + " seconds (" +
         pace_text(counts) + " a second, " + in_megabytes(counts.bytes) + ", " +
         losses_text(counts) + ") in " + folder.string() + ".";
}

ProgressReport::ProgressReport(std::ostream& out, bool is_terminal, Clock::time_point start)
    : out_(out),
      is_terminal_(is_terminal),
      period_(std::chrono::seconds(is_terminal ? 1 : 5)),
      shown_(start) {}

void ProgressReport::show(const RecordingCounts& counts, Clock::time_point now) {
  if (now - shown_ < period_) return;
  shown_ = now;
  if (is_terminal_) {
    constexpr const char* kClearRest = "\x1B[K";
    out_ << "\r" << progress_text(counts) << kClearRest << std::flush;
    line_is_open_ = true;
  } else {
    out_ << progress_text(counts) << std::endl;
  }
}

void ProgressReport::end() {
  if (line_is_open_) out_ << std::endl;
  line_is_open_ = false;
}

}  // namespace halcyra::record
