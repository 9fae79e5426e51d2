#include "enroll/report_findings.hpp"

#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

namespace halcyra {
namespace {

using Members = std::vector<std::size_t>;

constexpr double kUnlike = 90.0;
constexpr double kAlike = 50.0;

// A report whose samples are as far from each other as a test says.
class FindFaults : public ::testing::Test {
 protected:
  FindFaults() { report_.confirmed_threshold = 55.0; }

  // Samples of a stage, all unlike each other and everything before.
  void add(const std::string& stage, int count) {
    StageSummary summary;
    summary.stage = stage;
    summary.samples = count;
    report_.stages.push_back(summary);
    for (int i = 0; i < count; ++i) {
      ReportedSample sample;
      sample.stage = stage;
      sample.image =
          cv::Mat(160, 160, CV_8UC1, cv::Scalar(static_cast<double>(report_.samples.size())));
      sample.size = sample.image.size();
      sample.quality = "accepted";
      report_.samples.push_back(sample);
    }
    distances_.assign(report_.samples.size(), std::vector<double>(report_.samples.size(), kUnlike));
  }
  void make_alike(const Members& group) {
    for (const std::size_t a : group) {
      for (const std::size_t b : group) distances_[a][b] = kAlike;
    }
  }
  void make_undecodable(std::size_t sample) {
    report_.samples[sample].image.release();
    const double infinite = std::numeric_limits<double>::infinity();
    for (std::size_t other = 0; other < distances_.size(); ++other) {
      distances_[sample][other] = infinite;
      distances_[other][sample] = infinite;
    }
  }
  void set_nearest(std::size_t sample, std::size_t other, double distance) {
    report_.samples[sample].nearest = NearestSample{other, distance};
    distances_[sample][other] = distance;
  }
  std::vector<Finding> find(FindingKind kind) const {
    std::vector<Finding> found;
    for (const Finding& finding : find_faults(report_, distances_)) {
      if (finding.kind == kind) found.push_back(finding);
    }
    return found;
  }
  std::vector<Members> members(FindingKind kind) const {
    std::vector<Members> lists;
    for (const Finding& finding : find(kind)) lists.push_back(finding.samples);
    return lists;
  }

  SampleReport report_;
  DistanceTable distances_;
};

using Lists = std::vector<Members>;

// ---- Strangers.

TEST_F(FindFaults, NamesWhatIsOutsideTheLargestGroupOfAPose) {
  add("left", 6);
  make_alike({0, 2, 4});
  make_alike({1, 5});
  EXPECT_EQ(members(FindingKind::kOutlier), (Lists{{1, 3, 5}}));
  EXPECT_EQ(find(FindingKind::kOutlier).front().sentence,
            "Are these the owner? They are unlike the others of left. Take more like them, or "
            "remove them.");
  EXPECT_TRUE(find(FindingKind::kDivided).empty());
}

TEST_F(FindFaults, SpeaksOfASingleStrangerInTheSingular) {
  add("front", 3);
  make_alike({0, 2});
  EXPECT_EQ(members(FindingKind::kOutlier), (Lists{{1}}));
  EXPECT_EQ(find(FindingKind::kOutlier).front().sentence,
            "Is this the owner? It is unlike the others of front. Take more like it, or remove "
            "it.");
}

TEST_F(FindFaults, LinksSamplesThatAreAlikeInOneDirection) {
  add("front", 3);
  distances_[0][1] = 55.0;
  distances_[2][1] = 55.0;
  EXPECT_TRUE(members(FindingKind::kOutlier).empty());
  distances_[2][1] = 55.1;
  EXPECT_EQ(members(FindingKind::kOutlier), (Lists{{2}}));
}

TEST_F(FindFaults, DoesNotLinkStagesWithEachOther) {
  add("front", 3);
  add("left", 3);
  make_alike({0, 1});
  make_alike({2, 3, 4, 5});
  EXPECT_EQ(members(FindingKind::kOutlier), (Lists{{2}}));
}

TEST_F(FindFaults, NamesEachOfSeveralLargestGroups) {
  add("right", 5);
  make_alike({0, 3});
  make_alike({1, 4});
  EXPECT_EQ(members(FindingKind::kDivided), (Lists{{0, 3}, {1, 4}}));
  EXPECT_EQ(members(FindingKind::kOutlier), (Lists{{2}}));
  EXPECT_EQ(find(FindingKind::kDivided).front().sentence,
            "Are these the owner? The samples of right fall into 2 groups, and this is one of "
            "them.");
}

TEST_F(FindFaults, SaysWhenAllSamplesOfAStageAreUnlike) {
  for (const char* stage : {"front", "flat"}) {
    report_ = SampleReport();
    add(stage, 3);
    EXPECT_EQ(members(FindingKind::kDivided), (Lists{{0, 1, 2}})) << stage;
    EXPECT_TRUE(members(FindingKind::kOutlier).empty()) << stage;
  }
}

TEST_F(FindFaults, NamesOnlySamplesThatAreAloneInOtherStages) {
  add("flat", 7);
  make_alike({0, 1, 2});
  make_alike({3, 4});
  EXPECT_EQ(members(FindingKind::kOutlier), (Lists{{5, 6}}));
  make_alike({3, 4, 5});
  EXPECT_EQ(members(FindingKind::kOutlier), (Lists{{6}}));
  EXPECT_TRUE(members(FindingKind::kDivided).empty());
}

TEST_F(FindFaults, SaysNothingOfStrangersAmongTwo) {
  add("front", 2);
  EXPECT_TRUE(members(FindingKind::kOutlier).empty());
  EXPECT_TRUE(members(FindingKind::kDivided).empty());
}

TEST_F(FindFaults, DoesNotCountUndecodableSamplesInAGroup) {
  add("front", 3);
  make_undecodable(1);
  EXPECT_TRUE(members(FindingKind::kOutlier).empty());
  EXPECT_TRUE(members(FindingKind::kDivided).empty());
}

// ---- Near-copies.

TEST_F(FindFaults, NamesAPairOfNearCopiesOnce) {
  add("front", 3);
  make_alike({0, 1, 2});
  set_nearest(0, 2, 29.9);
  set_nearest(2, 0, 28.0);
  set_nearest(1, 0, 30.0);
  EXPECT_EQ(members(FindingKind::kNearCopy), (Lists{{0, 2}}));
  EXPECT_EQ(find(FindingKind::kNearCopy).front().sentence,
            "These samples are almost the same (distance 29.9). Keep one of them.");
}

TEST_F(FindFaults, TakesNoNearCopiesFromOneDirectionAlone) {
  add("front", 2);
  make_alike({0, 1});
  set_nearest(0, 1, 29.9);
  set_nearest(1, 0, 30.0);
  EXPECT_EQ(members(FindingKind::kNearCopy), Lists());
}

TEST_F(FindFaults, NamesTheSamePictureHoweverFarItIsFromItself) {
  add("front", 3);
  make_alike({0, 1, 2});
  report_.samples[2].image = report_.samples[0].image.clone();
  set_nearest(0, 2, 45.0);
  distances_[0][0] = 45.0;
  EXPECT_EQ(members(FindingKind::kNearCopy), (Lists{{0, 2}}));
  EXPECT_EQ(find(FindingKind::kNearCopy).front().sentence,
            "These samples are the same picture. Keep one of them.");
}

// ---- The others.

TEST_F(FindFaults, SaysHowManySamplesAPoseLacks) {
  add("front", 2);
  add("left", 3);
  add("flat", 1);
  report_.per_pose = 3;
  const std::vector<Finding> found = find(FindingKind::kTooFew);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found.front().sentence, "The pose front has 2 of 3 samples. Take 1 more.");
  EXPECT_TRUE(found.front().samples.empty());
}

TEST_F(FindFaults, SaysWhyTheGateRefusesASample) {
  add("front", 2);
  report_.samples[1].quality = "too_blurry";
  report_.samples[1].measures = {100.0, 50.0, 54.96};
  EXPECT_EQ(members(FindingKind::kRefused), (Lists{{1}}));
  EXPECT_EQ(find(FindingKind::kRefused).front().sentence,
            "Too blurry (sharpness 54.9, at least 60). Replace it. Hold still, and clean the "
            "lens.");
}

TEST_F(FindFaults, TellsFilesThatEndTheDashboardFromThoseItLeavesOut) {
  add("front", 3);
  make_alike({0, 1, 2});
  make_undecodable(0);
  make_undecodable(2);
  report_.samples[2].too_large = true;
  EXPECT_EQ(members(FindingKind::kUndecodable), (Lists{{0}}));
  EXPECT_EQ(members(FindingKind::kTooLarge), (Lists{{2}}));
}

TEST_F(FindFaults, BeginsWithTheMostUrgent) {
  report_.per_pose = 9;
  add("front", 4);
  make_alike({0, 1});
  set_nearest(0, 1, 20.0);
  set_nearest(1, 0, 20.0);
  report_.samples[3].quality = "too_small";
  std::vector<FindingKind> kinds;
  for (const Finding& finding : find_faults(report_, distances_)) {
    kinds.push_back(finding.kind);
  }
  EXPECT_EQ(kinds, (std::vector<FindingKind>{FindingKind::kOutlier, FindingKind::kRefused,
                                             FindingKind::kNearCopy, FindingKind::kTooFew}));
}

}  // namespace
}  // namespace halcyra
