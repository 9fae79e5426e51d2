#include "enroll/sample_report.hpp"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "app/run_state/runtime_status.hpp"
#include "face_pipeline/owner_recognition.hpp"
#include "face_pipeline/sample_loader.hpp"
#include "tests/enroll/sample_set.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

std::vector<Finding> found(const SampleReport& report, FindingKind kind) {
  std::vector<Finding> findings;
  for (const Finding& finding : report.findings) {
    if (finding.kind == kind) findings.push_back(finding);
  }
  return findings;
}

Texts paths(const SampleReport& report) {
  Texts texts;
  for (const ReportedSample& sample : report.samples) texts.push_back(sample.path);
  return texts;
}

// ---- Folders without samples.

TEST(ReportOnSamples, ComplainsOfAMissingFolder) {
  const SampleSet set;
  EXPECT_EQ(set.report().complaint, "There is no folder " + set.options.samples_dir + ".");
  EXPECT_FALSE(is_good(set.report()));
}

TEST(ReportOnSamples, ComplainsOfAFile) {
  SampleSet set;
  set.add("a.png", shifted_face(0));
  set.options.samples_dir += "/a.png";
  EXPECT_EQ(set.report().complaint, set.options.samples_dir + " is not a folder.");
}

TEST(ReportOnSamples, ComplainsOfAFolderWithoutSamples) {
  const SampleSet set;
  set.add_bytes("front/notes.txt", "no sample");
  EXPECT_EQ(set.report().complaint, "There are no samples in " + set.options.samples_dir + ".");
  EXPECT_TRUE(set.report().samples.empty());
}

TEST(ReportOnSamples, NamesTheFolderThatCannotBeRead) {
  if (geteuid() == 0) GTEST_SKIP() << "every folder can be read by root";
  const SampleSet set;
  set.add("front/a.png", shifted_face(0));
  set.add("left/b.png", shifted_face(1));
  const fs::path locked = set.place("left/x").parent_path();
  fs::permissions(locked, fs::perms::none);
  EXPECT_EQ(set.report().complaint, locked.string() + " cannot be read: Permission denied.");
  fs::permissions(locked, fs::perms::owner_all);
}

// ---- Each sample.

TEST(ReportOnSamples, MeasuresEachSampleInItsOwnSizeAsTheGateDoes) {
  const SampleSet set;
  cv::Mat small;
  cv::resize(shifted_face(0), small, cv::Size(79, 90));
  set.add("front/a.png", shifted_face(0));
  set.add("left/b.png", small);
  const SampleReport report = set.report();
  ASSERT_EQ(paths(report), (Texts{"front/a.png", "left/b.png"}));
  for (const ReportedSample& sample : report.samples) {
    const cv::Mat picture = read_sample(sample.file);
    const FaceMeasures measures = measure_face(picture);
    EXPECT_EQ(sample.size, picture.size());
    EXPECT_EQ(sample.measures.brightness, measures.brightness);
    EXPECT_EQ(sample.measures.contrast, measures.contrast);
    EXPECT_EQ(sample.measures.sharpness, measures.sharpness);
    EXPECT_TRUE(same_pixels(sample.image, make_sample(picture, {}).image));
  }
  EXPECT_EQ(report.samples[0].quality, "accepted");
  EXPECT_EQ(report.samples[1].quality, "too_small");
  EXPECT_EQ(found(report, FindingKind::kRefused).front().samples, (std::vector<std::size_t>{1}));
}

class LeaveOneOut : public ::testing::Test {
 protected:
  LeaveOneOut() {
    for (const int shift : {0, 1, 4, 6, 12, 20, 35}) {
      set_.add("front/" + std::to_string(100 + shift) + ".png", shifted_face(shift));
    }
  }
  // So that every result appears, whatever the distances are.
  void choose_thresholds() {
    std::vector<double> distances;
    for (const ReportedSample& sample : set_.report().samples) {
      distances.push_back(sample.nearest->distance);
    }
    std::sort(distances.begin(), distances.end());
    set_.options.confirmed_threshold = distances[2];
    set_.options.candidate_threshold = distances[4];
    set_.options.confirm_required = 1;
  }
  // What the dashboard says of the sample's face if its file is missing.
  FaceInfo recognised_without(const ReportedSample& sample) const {
    const TemporaryFolder others;
    fs::copy(set_.options.samples_dir, others.path(), fs::copy_options::recursive);
    fs::remove(others.path() / sample.path);
    Options options = set_.options;
    options.samples_dir = others.path().string();
    RecognitionState state;
    RuntimeStatus status;
    train_recognizer(state, options, status);
    FaceInfo face;
    recognize_owner(face, match_owner(read_sample(sample.file), state), state, status, options);
    return face;
  }

  SampleSet set_;
};

TEST_F(LeaveOneOut, IsWhatTheRecogniserSaysWithoutTheSample) {
  choose_thresholds();
  for (const ReportedSample& sample : set_.report().samples) {
    const FaceInfo face = recognised_without(sample);
    EXPECT_DOUBLE_EQ(sample.nearest->distance, face.confidence) << sample.path;
    const std::string label = sample.result == "confirmed vote" ? "ConfirmedDorran"
                              : sample.result == "candidate"    ? "CandidateDorran"
                                                                : "Unknown";
    EXPECT_EQ(label, face.label) << sample.path;
  }
}

TEST_F(LeaveOneOut, IsSummedUpForTheStage) {
  choose_thresholds();
  const SampleReport report = set_.report();
  const StageSummary& front = report.stages.front();
  EXPECT_EQ(front.stage, "front");
  EXPECT_EQ(front.samples, 7);
  EXPECT_EQ(front.confirmed_votes + front.candidates + front.unknown, 7);
  EXPECT_GE(front.confirmed_votes, 3);
  EXPECT_GE(front.candidates, 1);
  EXPECT_GE(front.unknown, 1);
  std::vector<double> distances;
  for (const ReportedSample& sample : report.samples) {
    distances.push_back(sample.nearest->distance);
  }
  std::sort(distances.begin(), distances.end());
  EXPECT_EQ(*front.median_distance, distances[3]);
}

TEST_F(LeaveOneOut, NamesTheNearestOther) {
  const SampleReport report = set_.report();
  EXPECT_EQ(report.samples[0].nearest->index, 1U);
  EXPECT_EQ(report.samples[1].nearest->index, 0U);
}

TEST(ReportOnSamples, HasNoDistanceForASingleSample) {
  const SampleSet set;
  set.add("front/a.png", shifted_face(0));
  const SampleReport report = set.report();
  EXPECT_FALSE(report.samples.front().nearest);
  EXPECT_EQ(report.samples.front().result, "");
  EXPECT_FALSE(report.stages.front().median_distance);
}

TEST(ReportOnSamples, TakesTheMiddleOfTwoDistancesForTheMedian) {
  const SampleSet set;
  set.add("front/a.png", shifted_face(0));
  set.add("front/b.png", shifted_face(3));
  const SampleReport report = set.report();
  EXPECT_DOUBLE_EQ(*report.stages.front().median_distance,
                   (report.samples[0].nearest->distance + report.samples[1].nearest->distance) / 2);
}

// ---- Files without a picture.

TEST(ReportOnSamples, GoesOnAfterFilesThatCannotBeDecoded) {
  const SampleSet set;
  set.add_bytes("front/a.png", "no picture");
  set.add_bytes("front/b.pgm", huge_header());
  set.add("front/c.png", shifted_face(0));
  set.add("left/d.png", shifted_face(9));
  const SampleReport report = set.report();
  ASSERT_EQ(report.samples.size(), 4U);
  EXPECT_TRUE(report.samples[0].image.empty());
  EXPECT_TRUE(report.samples[1].image.empty());
  EXPECT_EQ(report.samples[2].nearest->index, 3U);
  EXPECT_EQ(report.samples[3].nearest->index, 2U);
  EXPECT_EQ(report.stages.front().samples, 1);
  EXPECT_EQ(report.stages.front().undecodable, 2);
  EXPECT_EQ(found(report, FindingKind::kUndecodable).front().samples,
            (std::vector<std::size_t>{0}));
  EXPECT_EQ(found(report, FindingKind::kTooLarge).front().samples, (std::vector<std::size_t>{1}));
}

TEST(ReportOnSamples, ReportsOnNothingButUndecodableFiles) {
  const SampleSet set;
  set.add_bytes("front/a.png", "");
  EXPECT_EQ(set.report().samples.size(), 1U);
  EXPECT_EQ(set.report().complaint, "");
  EXPECT_FALSE(is_good(set.report()));
}

// ---- Stages and names.

TEST(ReportOnSamples, ListsThePosesFirstAndThenOtherStages) {
  const SampleSet set;
  set.add("zoo/a.png", shifted_face(0));
  set.add("b.png", shifted_face(3));
  set.add("side/left/c.png", shifted_face(6));
  Texts stages;
  std::vector<int> counts;
  for (const StageSummary& stage : set.report().stages) {
    stages.push_back(stage.stage);
    counts.push_back(stage.samples);
  }
  EXPECT_EQ(stages, (Texts{"front", "left", "right", "flat", "zoo"}));
  EXPECT_EQ(counts, (std::vector<int>{0, 1, 0, 1, 1}));
}

TEST(ReportOnSamples, NamesALinkByItsOwnPathAndTheDashboardsStage) {
  const SampleSet set;
  set.add("front/a.png", shifted_face(0));
  fs::create_symlink("../front/a.png", set.place("left/link.png"));
  const SampleReport report = set.report();
  EXPECT_EQ(paths(report), (Texts{"front/a.png", "left/link.png"}));
  EXPECT_EQ(report.samples[1].stage, "front");
  EXPECT_EQ(found(report, FindingKind::kNearCopy).front().sentence,
            "These samples are the same picture. Keep one of them.");
}

TEST(ReportOnSamples, TakesTheFolderInAnySpelling) {
  SampleSet set;
  set.add("front/a.png", shifted_face(0));
  const std::string plain = set.options.samples_dir;
  for (const std::string& spelling : {plain + "/", plain + "/./front/..", plain + "//"}) {
    set.options.samples_dir = spelling;
    EXPECT_EQ(paths(set.report()), Texts{"front/a.png"}) << spelling;
    EXPECT_EQ(set.report().samples.front().stage, "front") << spelling;
  }
}

// ---- The whole.

TEST(ReportOnSamples, IsGoodOfEnoughDifferentSamplesOfEachPose) {
  SampleSet set;
  int shift = 0;
  for (const char* stage : {"front", "left", "right"}) {
    for (const char* name : {"/1.png", "/2.png"}) {
      set.add(stage + std::string(name), shifted_face(shift));
      shift += 15;
    }
  }
  EXPECT_TRUE(is_good(set.report(2)));
  EXPECT_FALSE(is_good(set.report(3)));
  set.add("front/3.png", shifted_face(0));
  EXPECT_FALSE(is_good(set.report(2)));
}

}  // namespace
}  // namespace halcyra
