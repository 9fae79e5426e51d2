#include "record/progress.hpp"

#include <sstream>

#include <gtest/gtest.h>

namespace halcyra::record {
namespace {

RecordingCounts some_counts() {
  RecordingCounts counts;
  counts.sets = 31;
  counts.seconds = 2.0;
  counts.bytes = 12'340'000;
  counts.dropped = 4;
  counts.missed = 5;
  return counts;
}

TEST(ProgressText, HasAllCounts) {
  RecordingCounts counts = some_counts();
  EXPECT_EQ(progress_text(counts), "31 sets, 15.0 a second, 12.3 MB, 4 dropped, 5 missed");
  counts.free_bytes = 5'000'000'000;
  EXPECT_EQ(progress_text(counts),
            "31 sets, 15.0 a second, 12.3 MB, 4 dropped, 5 missed, 5000 MB free");
}

TEST(ProgressText, StartsWithoutAPace) {
  RecordingCounts counts;
  EXPECT_EQ(progress_text(counts), "0 sets, 0.0 a second, 0.0 MB, 0 dropped, 0 missed");
  counts.sets = 1;
  EXPECT_EQ(progress_text(counts), "1 set, 0.0 a second, 0.0 MB, 0 dropped, 0 missed");
}

TEST(SummaryText, IsOneSentence) {
  EXPECT_EQ(summary_text(some_counts(), "my room"),
            "Recorded 31 sets in 2.0 seconds (15.0 a second, 12.3 MB, 4 dropped, 5 missed) in "
            "my room.");
}

class ProgressReportTest : public ::testing::Test {
 protected:
  // What is shown when the report is asked every half second for `seconds`.
  std::string shown(bool is_terminal, int seconds) {
    ProgressReport report(out_, is_terminal, start_);
    for (int half = 1; half <= 2 * seconds; ++half) {
      report.show(RecordingCounts(), start_ + std::chrono::milliseconds(500) * half);
    }
    report.end();
    report.end();
    return out_.str();
  }

  const std::string text_ = progress_text(RecordingCounts());

 private:
  std::ostringstream out_;
  const ProgressReport::Clock::time_point start_{};
};

TEST_F(ProgressReportTest, RewritesTheLineOfATerminalEachSecond) {
  const std::string line = "\r" + text_ + "\x1B[K";
  EXPECT_EQ(shown(true, 3), line + line + line + "\n");
}

TEST_F(ProgressReportTest, WritesALineEachFiveSecondsElsewhere) {
  EXPECT_EQ(shown(false, 14), text_ + "\n" + text_ + "\n");
}

TEST_F(ProgressReportTest, SaysNothingOfAShortRecording) { EXPECT_EQ(shown(true, 0), ""); }

}  // namespace
}  // namespace halcyra::record
