// Sorts the samples of a stage into groups that look alike.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace halcyra {

using SampleGroup = std::vector<std::size_t>;

// Two members are in one group if `linked` says so of them, or if a chain of members leads from one
// to the other in which it says so of each with the next. `linked` must not depend on the order of
// its arguments. The largest group comes first, of equally large ones the one with the earliest
// member; within a group the members keep their order.
std::vector<SampleGroup> connected_groups(
    const SampleGroup& members, const std::function<bool(std::size_t, std::size_t)>& linked);

}  // namespace halcyra
