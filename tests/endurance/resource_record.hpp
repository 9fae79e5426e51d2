// Tells from samples of a run whether what it holds grows.
#pragma once

#include <string>
#include <vector>

#include "tests/endurance/process_resources.hpp"

namespace halcyra {

// One stretch of a run. What is held for a moment, such as the pipe to a command, is not counted:
// of everything but memory the least is taken, of memory the median.
using ResourcePeriod = ProcessResources;

// `samples` in as many periods of equal length; fewer where there are fewer samples than periods.
std::vector<ResourcePeriod> periods_of(const std::vector<ProcessResources>& samples, int count);

// What the last period holds more of than the first: "" when nothing. Memory may differ by 2 %, as
// the allocator keeps what it was given back in other amounts at other times; it is left out where
// the run was too short for the caches to have filled in its first period.
enum class Memory { kCompared, kLeftOut };
std::string growth(const std::vector<ResourcePeriod>& periods, Memory memory);

// A line for each period.
std::string table_of(const std::vector<ResourcePeriod>& periods);

}  // namespace halcyra
