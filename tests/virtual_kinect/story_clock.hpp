// The time that a test program's monotonic clock shows: as much as the test has let pass.
#pragma once

#include <chrono>

namespace halcyra {

// From then on std::chrono::steady_clock shows this time in the whole process. Timed waits still
// take real time, but count from here, so there must be none.
void set_story_time(std::chrono::nanoseconds time);

}  // namespace halcyra
