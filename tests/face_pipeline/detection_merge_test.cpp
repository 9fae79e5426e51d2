#include "face_pipeline/detection_merge.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core/types.hpp>

#include "tests/face_pipeline/detection_comparison.hpp"

namespace halcyra {

namespace {

using Detections = std::vector<Detection>;

Detection frontal(const cv::Rect& box) { return {box, "frontal"}; }
Detection left(const cv::Rect& box) { return {box, "profile_left"}; }
Detection right(const cv::Rect& box) { return {box, "profile_right"}; }

TEST(Dedupe, KeepsNothingOfNothing) { EXPECT_EQ(dedupe({}), Detections{}); }

TEST(Dedupe, KeepsDetectionsApartFromEachOtherLargestFirst) {
  const Detection small = left({0, 0, 10, 10});
  const Detection medium = right({100, 0, 20, 20});
  const Detection large = frontal({200, 0, 30, 30});
  EXPECT_EQ(dedupe({small, large, medium}), (Detections{large, medium, small}));
}

TEST(Dedupe, PutsTheFrontalFirstOfTwoOfOneArea) {
  const Detection profile = left({0, 0, 10, 10});
  const Detection face = frontal({100, 0, 5, 20});
  EXPECT_EQ(dedupe({profile, face}), (Detections{face, profile}));
}

TEST(Dedupe, RanksUnknownTypesBelowProfiles) {
  const Detection unknown = {{0, 0, 10, 10}, "tilted"};
  const Detection profile = right({100, 0, 10, 10});
  EXPECT_EQ(dedupe({unknown, profile}), (Detections{profile, unknown}));
  EXPECT_EQ(dedupe({unknown, left({1, 1, 9, 9})}), (Detections{left({1, 1, 9, 9})}));
}

TEST(Dedupe, KeepsTheFrontalOfTwoOfOneAreaThatOverlap) {
  const Detection face = frontal({10, 10, 40, 40});
  for (const Detection& profile : {left({12, 12, 40, 40}), right({8, 8, 40, 40})}) {
    EXPECT_EQ(dedupe({profile, face}), Detections{face});
    EXPECT_EQ(dedupe({face, profile}), Detections{face});
  }
}

TEST(Dedupe, LetsASmallerFrontalTakeOverTheProfilesPlace) {
  const Detection profile = left({0, 0, 50, 50});
  const Detection face = frontal({5, 5, 40, 40});
  const Detection between = right({200, 0, 45, 45});
  // It stands where the profile stood, which was the largest.
  EXPECT_EQ(dedupe({face, between, profile}), (Detections{face, between}));
}

TEST(Dedupe, KeepsTheLargerOfTwoProfiles) {
  const Detection larger = right({0, 0, 50, 50});
  EXPECT_EQ(dedupe({left({2, 2, 46, 46}), larger}), Detections{larger});
}

TEST(Dedupe, KeepsOneOfTwoProfilesOfOneArea) {
  const Detections kept = dedupe({left({0, 0, 50, 50}), right({1, 1, 50, 50})});
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_TRUE(kept[0] == left({0, 0, 50, 50}) || kept[0] == right({1, 1, 50, 50}));
}

TEST(Dedupe, KeepsTheLargerOfTwoFrontals) {
  const Detection larger = frontal({0, 0, 50, 50});
  EXPECT_EQ(dedupe({frontal({2, 2, 46, 46}), larger}), Detections{larger});
}

// Shared columns out of all: 14 of 40, and 34 of 100.
TEST(Dedupe, MergesFromAnOverlapOf35PerCentOn) {
  EXPECT_EQ(dedupe({frontal({0, 0, 27, 10}), frontal({13, 0, 27, 10})}).size(), 1U);
  EXPECT_EQ(dedupe({frontal({0, 0, 67, 10}), frontal({33, 0, 67, 10})}).size(), 2U);
}

TEST(Dedupe, MeasuresOverlapByTheUnionNotTheSmallerBox) {
  // The small box lies inside the large one but is a ninth of it.
  const Detection large = frontal({0, 0, 90, 90});
  const Detection small = frontal({30, 30, 30, 30});
  EXPECT_EQ(dedupe({small, large}), (Detections{large, small}));
}

TEST(Dedupe, DoesNotMergeBoxesThatOnlyTouch) {
  const Detections side_by_side = {frontal({0, 0, 20, 20}), left({20, 0, 19, 20})};
  EXPECT_EQ(dedupe(side_by_side), side_by_side);
  const Detections corner_to_corner = {frontal({0, 0, 20, 20}), left({20, 20, 19, 20})};
  EXPECT_EQ(dedupe(corner_to_corner), corner_to_corner);
}

TEST(Dedupe, JudgesAgainstTheFirstOverlappingPlaceOnly) {
  // The frontal overlaps both profiles, which do not overlap each other enough; it takes over the
  // larger one's place and leaves the other's alone.
  const Detection first = left({0, 0, 40, 41});
  const Detection second = right({20, 0, 40, 40});
  const Detection face = frontal({10, 0, 39, 40});
  EXPECT_EQ(dedupe({second, face, first}), (Detections{face, second}));
}

TEST(Dedupe, ComparesLaterDetectionsWithTheBoxThatTookOver) {
  const Detection profile = left({0, 0, 100, 100});
  const Detection face = frontal({0, 0, 62, 62});
  // Overlaps the profile by 36 per cent, but the frontal face that replaced it by far less.
  const Detection later = right({40, 40, 60, 60});
  ASSERT_EQ(dedupe({profile, later}), Detections{profile});
  EXPECT_EQ(dedupe({profile, face, later}), (Detections{face, later}));
}

TEST(Dedupe, NeverMergesEmptyBoxes) {
  const Detections same_empty = {frontal({5, 5, 0, 10}), frontal({5, 5, 0, 10})};
  EXPECT_EQ(dedupe(same_empty), same_empty);
  const Detections inverted = {frontal({5, 5, -10, -10}), frontal({5, 5, -10, -10})};
  EXPECT_EQ(dedupe(inverted), inverted);
  const Detections inside = {frontal({0, 0, 10, 10}), left({3, 3, 4, 0})};
  EXPECT_EQ(dedupe(inside), inside);
}

// ---- The same rules, written as plainly as possible, on random lists.

int ruled_rank(const Detection& detection) {
  if (detection.detector_type == "frontal") return 3;
  return detection.detector_type.rfind("profile_", 0) == 0 ? 2 : 1;
}

int area(const Detection& detection) { return detection.box.width * detection.box.height; }

bool ruled_match(const cv::Rect& d, const cv::Rect& k) {
  if (d.width <= 0 || d.height <= 0 || k.width <= 0 || k.height <= 0) return false;
  const int width = std::min(d.x + d.width, k.x + k.width) - std::max(d.x, k.x);
  const int height = std::min(d.y + d.height, k.y + k.height) - std::max(d.y, k.y);
  if (width <= 0 || height <= 0) return false;
  const double common = width * height;
  return common / (d.width * d.height + k.width * k.height - common) >= 0.35;
}

Detections ruled_dedupe(Detections list) {
  std::sort(list.begin(), list.end(), [](const Detection& a, const Detection& b) {
    return std::make_pair(area(a), ruled_rank(a)) > std::make_pair(area(b), ruled_rank(b));
  });
  Detections kept;
  for (const Detection& d : list) {
    std::size_t k = 0;
    while (k < kept.size() && !ruled_match(d.box, kept[k].box)) ++k;
    if (k == kept.size()) {
      kept.push_back(d);
    } else if (ruled_rank(d) > ruled_rank(kept[k]) || area(d) > 1.2 * area(kept[k])) {
      kept[k] = d;
    }
  }
  return kept;
}

class RandomLists {
 public:
  // No two detections have the same area and rank, as their order would be undefined.
  Detections list() {
    Detections detections;
    std::set<std::pair<int, int>> seen;
    for (int i = whole(0, 14); i > 0; --i) {
      const Detection detection = any_detection();
      if (seen.emplace(area(detection), ruled_rank(detection)).second) {
        detections.push_back(detection);
      }
    }
    return detections;
  }

 private:
  int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

  Detection any_detection() {
    static const std::array<std::string, 4> kTypes = {"frontal", "profile_left", "profile_right",
                                                      "tilted"};
    const int least = whole(0, 9) == 0 ? -20 : 5;
    const cv::Rect box(whole(-10, 20), whole(-10, 20), whole(least, 40), whole(least, 40));
    return {box, kTypes[static_cast<std::size_t>(whole(0, 3))]};
  }

  std::mt19937 random_{1};
};

TEST(Dedupe, FollowsItsRulesOnRandomLists) {
  RandomLists lists;
  for (int i = 0; i < 3000; ++i) {
    const Detections list = lists.list();
    ASSERT_EQ(dedupe(list), ruled_dedupe(list)) << ::testing::PrintToString(list);
  }
}

}  // namespace
}  // namespace halcyra
