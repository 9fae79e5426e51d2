#include "enroll/sample_groups.hpp"

#include <set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace halcyra {
namespace {

using Groups = std::vector<SampleGroup>;
using Links = std::set<std::pair<std::size_t, std::size_t>>;

Groups groups_of(const SampleGroup& members, const Links& links) {
  return connected_groups(members, [&](std::size_t a, std::size_t b) {
    return links.count({a, b}) > 0 || links.count({b, a}) > 0;
  });
}

TEST(ConnectedGroups, AreNoneWithoutMembers) { EXPECT_EQ(groups_of({}, {}), Groups{}); }

TEST(ConnectedGroups, AreSingleMembersWithoutLinks) {
  EXPECT_EQ(groups_of({4, 7, 9}, {}), (Groups{{4}, {7}, {9}}));
}

TEST(ConnectedGroups, FollowChains) {
  EXPECT_EQ(groups_of({1, 2, 3, 4, 5}, {{1, 5}, {5, 3}, {2, 4}}), (Groups{{1, 3, 5}, {2, 4}}));
}

TEST(ConnectedGroups, BeginWithTheLargest) {
  EXPECT_EQ(groups_of({1, 2, 3, 4, 5, 6}, {{6, 4}, {5, 4}, {2, 3}}),
            (Groups{{4, 5, 6}, {2, 3}, {1}}));
}

TEST(ConnectedGroups, KeepTheOrderOfEquallyLargeOnes) {
  EXPECT_EQ(groups_of({1, 2, 3, 4}, {{2, 4}, {1, 3}}), (Groups{{1, 3}, {2, 4}}));
}

}  // namespace
}  // namespace halcyra
