// Tells from samples of a run whether its use of resources grows.
#pragma once

#include <string>
#include <vector>

#include "tests/endurance/process_resources.hpp"

namespace halcyra {

// One stretch of a run. Of memory it has the median, of the rest the minimum, so that what is held
// only for a moment, such as the pipe to a command, does not count.
using ResourcePeriod = ProcessResources;

// `samples` in that many periods of equal length; fewer if there are fewer samples than periods.
std::vector<ResourcePeriod> periods_of(const std::vector<ProcessResources>& samples, int count);

// What the last period holds more of than the first; "" if nothing. Memory may differ by 2 %,
// since the allocator does not return all of it at once. It is left out where the run was so short
// that caches were still filling in its first period.
enum class Memory { kCompared, kLeftOut };
std::string growth(const std::vector<ResourcePeriod>& periods, Memory memory);

// A line for each period.
std::string table_of(const std::vector<ResourcePeriod>& periods);

}  // namespace halcyra
