#include "tests/virtual_kinect/story_clock.hpp"

#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>

namespace halcyra {
namespace {

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

// An hour in, so that no library takes the first reading for "not read yet".
std::atomic<std::int64_t> g_monotonic_time = 3600 * kNanosecondsPerSecond;

}  // namespace

void set_story_time(std::chrono::nanoseconds time) {
  g_monotonic_time = 3600 * kNanosecondsPerSecond + time.count();
}

}  // namespace halcyra

// Takes the place of the C library's function, which steady_clock reads.
extern "C" int clock_gettime(clockid_t clock, struct timespec* result) noexcept {
  if (clock != CLOCK_MONOTONIC) {
    return static_cast<int>(syscall(SYS_clock_gettime, clock, result));
  }
  const std::int64_t time = halcyra::g_monotonic_time;
  result->tv_sec = time / halcyra::kNanosecondsPerSecond;
  result->tv_nsec = time % halcyra::kNanosecondsPerSecond;
  return 0;
}
