#include "app/stop_signal.hpp"

#include <signal.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace halcyra {
namespace {

// Runs in a process of its own: 0 if the signal asked for the end, once it was watched.
int answer_to(int number) {
  watch_stop_signals();
  if (stop_requested()) return 1;
  raise(number);
  return stop_requested() ? 0 : 2;
}

// A test that runs in the background may have been started with SIGHUP ignored.
class StopSignal : public ::testing::TestWithParam<int> {
 protected:
  StopSignal() { signal(GetParam(), SIG_DFL); }
};

TEST_P(StopSignal, AsksForTheEnd) {
  EXPECT_EXIT(_exit(answer_to(GetParam())), ::testing::ExitedWithCode(0), "");
}

TEST_P(StopSignal, EndsTheProcessTheSecondTime) {
  EXPECT_EXIT(
      {
        answer_to(GetParam());
        raise(GetParam());
      },
      ::testing::KilledBySignal(GetParam()), "");
}

// Of those that are ignored at the start, only SIGHUP stays so.
TEST_P(StopSignal, IsWatchedWhereAShellIgnoresIt) {
  const int answer = GetParam() == SIGHUP ? 2 : 0;
  EXPECT_EXIT(
      {
        signal(GetParam(), SIG_IGN);
        _exit(answer_to(GetParam()));
      },
      ::testing::ExitedWithCode(answer), "");
}

INSTANTIATE_TEST_SUITE_P(Signals, StopSignal, ::testing::Values(SIGINT, SIGTERM, SIGHUP));

}  // namespace
}  // namespace halcyra
