#include "enroll/sample_groups.hpp"

#include <algorithm>
#include <iterator>

namespace halcyra {
namespace {

// Moves what is linked to the group, directly or through others, out of `left` into the group.
void gather(SampleGroup& group, SampleGroup& left,
            const std::function<bool(std::size_t, std::size_t)>& linked) {
  for (std::size_t at = 0; at < group.size(); ++at) {
    const std::size_t member = group[at];
    const auto joining = std::stable_partition(
        left.begin(), left.end(), [&](std::size_t other) { return !linked(member, other); });
    std::copy(joining, left.end(), std::back_inserter(group));
    left.erase(joining, left.end());
  }
}

}  // namespace

std::vector<SampleGroup> connected_groups(
    const SampleGroup& members, const std::function<bool(std::size_t, std::size_t)>& linked) {
  std::vector<SampleGroup> groups;
  SampleGroup left = members;
  while (!left.empty()) {
    SampleGroup group = {left.front()};
    left.erase(left.begin());
    gather(group, left, linked);
    groups.push_back(group);
  }
  const auto place = [&](std::size_t member) {
    return std::find(members.begin(), members.end(), member);
  };
  for (SampleGroup& group : groups) {
    std::sort(group.begin(), group.end(),
              [&](std::size_t a, std::size_t b) { return place(a) < place(b); });
  }
  std::stable_sort(groups.begin(), groups.end(),
                   [](const SampleGroup& a, const SampleGroup& b) { return a.size() > b.size(); });
  return groups;
}

}  // namespace halcyra
