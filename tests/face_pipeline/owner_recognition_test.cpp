#include "face_pipeline/owner_recognition.hpp"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <deque>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/face.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "app/run_state/runtime_status.hpp"
#include "tests/face_pipeline/many_pictures.hpp"
#include "tests/support/event_messages.hpp"
#include "tests/support/photograph.hpp"
#include "tests/support/same_pixels.hpp"
#include "tests/support/temporary_folder.hpp"

namespace halcyra {
namespace {

using Messages = std::vector<std::string>;
using Labels = std::vector<std::string>;

const char kConfirmed[] = "ConfirmedDorran";
const char kCandidate[] = "CandidateDorran";
const char kUnknown[] = "Unknown";

// ---- Votes.

class VoteIdentity : public ::testing::Test {
 protected:
  std::string vote(double distance, int predicted_label = 1) {
    return vote_identity(state_, predicted_label, distance, options_);
  }
  Labels votes(const std::vector<double>& distances) {
    Labels labels;
    for (const double distance : distances) labels.push_back(vote(distance));
    return labels;
  }

  RecognitionState state_;
  Options options_;
};

TEST_F(VoteIdentity, ConfirmsFromTheFifthGoodMatchOn) {
  EXPECT_EQ(votes({50, 50, 50, 50, 50, 50}),
            (Labels{kCandidate, kCandidate, kCandidate, kCandidate, kConfirmed, kConfirmed}));
}

TEST_F(VoteIdentity, VotesForTheOwnerUpTo55) {
  vote(55.0);
  vote(std::nextafter(55.0, 56.0));
  vote(0.0);
  EXPECT_EQ(state_.confirm_history, (std::deque<int>{1, 0, 1}));
}

TEST_F(VoteIdentity, TakesACandidateUpTo60) {
  EXPECT_EQ(vote(60.0), kCandidate);
  EXPECT_EQ(vote(std::nextafter(60.0, 61.0)), kUnknown);
  EXPECT_EQ(vote(DBL_MAX), kUnknown);
  EXPECT_EQ(state_.confirm_history, (std::deque<int>{0, 0, 0}));
}

TEST_F(VoteIdentity, NeedsAGoodMatchOfItsOwnToConfirm) {
  state_.confirm_history = {1, 1, 1, 1, 1, 1};
  EXPECT_EQ(vote(58), kCandidate);
  EXPECT_EQ(vote(90), kUnknown);
  EXPECT_EQ(vote(50), kConfirmed);
}

TEST_F(VoteIdentity, CountsItsOwnVote) {
  state_.confirm_history = {1, 0, 1, 0, 1, 0, 1};
  EXPECT_EQ(vote(50), kConfirmed);
}

TEST_F(VoteIdentity, RemembersTheLastTenVotes) {
  state_.confirm_history = {1, 1, 1, 1, 0, 0, 0, 0, 0, 0};
  // One of the four old votes drops out when the new one comes in.
  EXPECT_EQ(vote(50), kCandidate);
  EXPECT_EQ(state_.confirm_history, (std::deque<int>{1, 1, 1, 0, 0, 0, 0, 0, 0, 1}));

  state_.confirm_history = {0, 1, 1, 1, 1, 0, 0, 0, 0, 0};
  EXPECT_EQ(vote(50), kConfirmed);
  EXPECT_EQ(state_.confirm_history.size(), 10U);
}

TEST_F(VoteIdentity, ShortensALongHistoryFromItsFront) {
  state_.confirm_history = std::deque<int>(20, 1);
  state_.confirm_history.back() = 0;
  vote(90);
  EXPECT_EQ(state_.confirm_history, (std::deque<int>{1, 1, 1, 1, 1, 1, 1, 1, 0, 0}));
}

TEST_F(VoteIdentity, LetsAStrangerHoldTheOwnerBack) {
  // Every second face is somebody else: never more than five ones in ten, and at first fewer.
  const Labels labels = votes({50, 90, 50, 90, 50, 90, 50, 90, 50, 90, 50});
  EXPECT_EQ(labels[6], kCandidate);
  EXPECT_EQ(labels[8], kConfirmed);
  EXPECT_EQ(labels[9], kUnknown);
  // Two strangers beside the owner: at most four ones in ten.
  state_.confirm_history.clear();
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(vote(50), kCandidate);
    EXPECT_EQ(vote(90), kUnknown);
    EXPECT_EQ(vote(90), kUnknown);
  }
}

TEST_F(VoteIdentity, CountsNothingForAnyOtherClass) {
  state_.confirm_history = {1, 1, 1, 1, 1};
  for (const int label : {-1, 0, 2}) EXPECT_EQ(vote(0.0, label), kUnknown) << label;
  EXPECT_EQ(state_.confirm_history, (std::deque<int>{1, 1, 1, 1, 1, 0, 0, 0}));
}

TEST_F(VoteIdentity, FollowsTheOptions) {
  options_.candidate_threshold = 30;
  options_.confirmed_threshold = 20;
  options_.confirm_window = 3;
  options_.confirm_required = 2;
  EXPECT_EQ(votes({20, 21, 25, 20, 31, 20}),
            (Labels{kCandidate, kCandidate, kCandidate, kCandidate, kUnknown, kConfirmed}));
  EXPECT_EQ(state_.confirm_history, (std::deque<int>{1, 0, 1}));
}

// A confirmed face need not be a candidate: the two limits are independent.
TEST_F(VoteIdentity, ConfirmsAlsoAboveTheCandidateThreshold) {
  options_.candidate_threshold = 10;
  options_.confirm_required = 2;
  EXPECT_EQ(votes({50, 50}), (Labels{kUnknown, kConfirmed}));
}

// ---- Nearest stage.

TrainingSample sample_of(const cv::Mat& image, const std::string& stage) {
  return {image, 1, stage + ".png", stage};
}

// A probe whose left half has one grey level and whose right half has another.
cv::Mat halves(int first, int second) {
  cv::Mat image(160, 160, CV_8UC1, cv::Scalar(first));
  image.colRange(80, 160).setTo(cv::Scalar(second));
  return image;
}

TEST(NearestStage, IsUnknownWithoutASample) {
  EXPECT_EQ(nearest_stage({}, halves(0, 255)), "unknown");
}

TEST(NearestStage, IsThatOfTheNearestSample) {
  const std::vector<TrainingSample> samples = {sample_of(halves(0, 200), "front"),
                                               sample_of(halves(100, 120), "left"),
                                               sample_of(halves(220, 20), "right")};
  EXPECT_EQ(nearest_stage(samples, halves(10, 210)), "front");
  EXPECT_EQ(nearest_stage(samples, halves(90, 130)), "left");
  EXPECT_EQ(nearest_stage(samples, halves(255, 0)), "right");
}

TEST(NearestStage, KeepsTheEarlierSampleOfATie) {
  const std::vector<TrainingSample> samples = {sample_of(halves(0, 0), "far"),
                                               sample_of(halves(110, 90), "first"),
                                               sample_of(halves(90, 110), "second")};
  EXPECT_EQ(nearest_stage(samples, halves(100, 100)), "first");
}

// A few large differences count more than many small ones whose sum is the same.
TEST(NearestStage, MeasuresByTheSumOfSquares) {
  const std::vector<TrainingSample> samples = {sample_of(halves(100, 160), "few"),
                                               sample_of(halves(135, 135), "many")};
  EXPECT_EQ(nearest_stage(samples, halves(100, 100)), "many");
  const std::vector<TrainingSample> equal_sums = {sample_of(halves(100, 160), "few"),
                                                  sample_of(halves(130, 130), "many")};
  EXPECT_EQ(nearest_stage(equal_sums, halves(100, 100)), "many");
}

// But the largest difference alone does not decide.
TEST(NearestStage, SumsOverAllPixels) {
  cv::Mat one_pixel = halves(0, 0);
  one_pixel.at<unsigned char>(0, 0) = 255;
  const std::vector<TrainingSample> samples = {sample_of(halves(10, 10), "everywhere"),
                                               sample_of(one_pixel, "one pixel")};
  EXPECT_EQ(nearest_stage(samples, halves(0, 0)), "one pixel");
}

TEST(NearestStage, ComparesWithTheSamplesAsTheyAre) {
  // Equalised, the first would be the probe itself.
  const std::vector<TrainingSample> samples = {sample_of(halves(100, 101), "dim"),
                                               sample_of(halves(20, 230), "bright")};
  EXPECT_EQ(nearest_stage(samples, halves(0, 255)), "bright");
}

TEST(NearestStage, FindsTheSampleOfTheSmallestNorm) {
  const std::vector<cv::Mat>& pictures = many_pictures();
  std::vector<TrainingSample> samples;
  for (std::size_t i = 0; i < pictures.size(); i += 5) {
    samples.push_back(sample_of(pictures[i], std::to_string(i)));
  }
  for (const cv::Mat& probe : pictures) {
    std::string stage;
    double best = DBL_MAX;
    for (const TrainingSample& sample : samples) {
      const double norm = cv::norm(sample.image, probe, cv::NORM_L2);
      if (norm < best) stage = sample.stage;
      best = std::min(best, norm);
    }
    EXPECT_EQ(nearest_stage(samples, probe), stage);
  }
}

// ---- Training and recognising with crops of the photograph.

cv::Mat cut_out(const cv::Rect& box) { return photograph()(box).clone(); }

// Three crops of the photographed face, as in a folder of samples.
class OwnerModel : public ::testing::Test {
 protected:
  void write_samples() {
    write("front/1.png", cut_out(photographed_face()));
    write("left/1.png", cut_out({160, 50, 120, 120}));
    write("right/1.png", cut_out({178, 66, 96, 96}));
  }
  void write(const std::string& name, const cv::Mat& picture) {
    const std::filesystem::path file = folder_.path() / name;
    std::filesystem::create_directories(file.parent_path());
    ASSERT_TRUE(cv::imwrite(file.string(), picture));
  }
  void train() {
    options_.samples_dir = folder_.path().string();
    train_recognizer(state_, options_, status_);
  }
  FaceInfo recognize(const cv::Mat& crop, const std::string& detector_type = "frontal") {
    FaceInfo face;
    face.detector_type = detector_type;
    recognize_owner(face, match_owner(crop, state_), state_, status_, options_);
    return face;
  }

  TemporaryFolder folder_;
  RecognitionState state_;
  Options options_;
  RuntimeStatus status_;
};

TEST_F(OwnerModel, IsTrainedWithAllSamples) {
  write_samples();
  train();
  EXPECT_TRUE(status_.samples_loaded);
  EXPECT_EQ(event_messages(status_), Messages{"Dorran recognition samples loaded: 3"});
  ASSERT_EQ(state_.samples.size(), 3U);
  EXPECT_EQ(state_.samples[1].stage, "left");
  ASSERT_FALSE(state_.recognizer.empty());
  EXPECT_EQ(state_.recognizer->getRadius(), 1);
  EXPECT_EQ(state_.recognizer->getNeighbors(), 8);
  EXPECT_EQ(state_.recognizer->getGridX(), 8);
  EXPECT_EQ(state_.recognizer->getGridY(), 8);
  EXPECT_EQ(state_.recognizer->getThreshold(), DBL_MAX);
  EXPECT_TRUE(same_pixels(state_.recognizer->getLabels(), cv::Mat(3, 1, CV_32SC1, cv::Scalar(1))));
}

TEST_F(OwnerModel, IsMissingWithoutASample) {
  options_.samples_dir = (folder_.path() / "missing").string();
  train_recognizer(state_, options_, status_);
  EXPECT_FALSE(status_.samples_loaded);
  EXPECT_TRUE(state_.recognizer.empty());
  EXPECT_TRUE(state_.samples.empty());
  EXPECT_EQ(event_messages(status_), Messages{"Recognition samples unavailable"});

  std::ofstream(folder_.path() / "broken.png") << "no picture";
  train();
  EXPECT_FALSE(status_.samples_loaded);
  EXPECT_TRUE(state_.recognizer.empty());
  EXPECT_EQ(event_messages(status_), (Messages{2, "Recognition samples unavailable"}));
}

TEST_F(OwnerModel, ThrowsWhenTheSamplesPathIsAFile) {
  write("a.png", cut_out(photographed_face()));
  options_.samples_dir = (folder_.path() / "a.png").string();
  EXPECT_THROW(train_recognizer(state_, options_, status_), std::filesystem::filesystem_error);
  EXPECT_TRUE(status_.events.empty());
}

// What OpenCV's recogniser predicts for a probe, with a model trained here.
double library_distance(const std::vector<TrainingSample>& samples, const cv::Mat& probe) {
  std::vector<cv::Mat> images;
  for (const TrainingSample& sample : samples) images.push_back(sample.image);
  const auto model = cv::face::LBPHFaceRecognizer::create(1, 8, 8, 8, DBL_MAX);
  model->train(images, std::vector<int>(images.size(), 1));
  int label = -1;
  double distance = 0.0;
  model->predict(probe, label, distance);
  EXPECT_EQ(label, 1);
  return distance;
}

cv::Mat resized(const cv::Mat& image) {
  cv::Mat result;
  cv::resize(image, result, cv::Size(160, 160), 0, 0, cv::INTER_AREA);
  return result;
}

cv::Mat equalised(const cv::Mat& image) {
  cv::Mat result;
  cv::equalizeHist(image, result);
  return result;
}

TEST_F(OwnerModel, MatchesTheEqualisedAndThenResizedCrop) {
  write_samples();
  train();
  const cv::Mat crop = cut_out({165, 58, 112, 104});
  const FaceInfo face = recognize(crop);
  EXPECT_EQ(face.confidence, library_distance(state_.samples, resized(equalised(crop))));
  // Neither step may be left out, and their order matters.
  EXPECT_NE(face.confidence, library_distance(state_.samples, resized(crop)));
  EXPECT_NE(face.confidence, library_distance(state_.samples, equalised(resized(crop))));
}

TEST_F(OwnerModel, LeavesTheCropAsItIs) {
  write_samples();
  train();
  const cv::Mat crop = cut_out(photographed_face());
  recognize(crop);
  EXPECT_TRUE(same_pixels(crop, cut_out(photographed_face())));
}

TEST_F(OwnerModel, TakesTheStageNearestToTheEqualisedCrop) {
  const cv::Mat crop = cut_out(photographed_face());
  write("equalised/1.png", resized(equalised(crop)));
  write("plain/1.png", resized(crop));
  train();
  EXPECT_EQ(recognize(crop).stage, "equalised");
}

TEST_F(OwnerModel, NamesTheStageOfAStrangerToo) {
  write_samples();
  train();
  options_.candidate_threshold = -1;
  options_.confirmed_threshold = -1;
  const cv::Mat crop = cut_out({178, 66, 96, 96});
  const FaceInfo face = recognize(crop);
  EXPECT_EQ(face.label, kUnknown);
  EXPECT_EQ(face.stage, nearest_stage(state_.samples, resized(equalised(crop))));
  EXPECT_NE(face.stage, "unknown");
}

// ---- Counting and logging.

class CountedOutcome : public OwnerModel {
 protected:
  void SetUp() override {
    write_samples();
    train();
    status_.events.clear();
    state_.confirm_history = {1, 1, 1, 1};
  }
  void expect_counts(int unknown, int candidate, int confirmed) {
    EXPECT_EQ(state_.cc_unknown_predictions, unknown);
    EXPECT_EQ(state_.cc_candidate_dorran_predictions, candidate);
    EXPECT_EQ(state_.cc_confirmed_dorran_predictions, confirmed);
  }
  // Thresholds that every distance is within, or none.
  void recognize_with(double candidate, double confirmed, const char* detector_type) {
    options_.candidate_threshold = candidate;
    options_.confirmed_threshold = confirmed;
    label_ = recognize(cut_out(photographed_face()), detector_type).label;
  }

  std::string label_;
};

TEST_F(CountedOutcome, LogsEveryConfirmedFace) {
  recognize_with(DBL_MAX, DBL_MAX, "frontal");
  EXPECT_EQ(label_, kConfirmed);
  recognize_with(DBL_MAX, DBL_MAX, "profile_left");
  expect_counts(0, 0, 2);
  EXPECT_EQ(event_messages(status_), (Messages{"Identity confirmed: Dorran via frontal",
                                               "Identity confirmed: Dorran via profile_left"}));
}

TEST_F(CountedOutcome, CountsCandidatesInSilence) {
  recognize_with(DBL_MAX, -1, "frontal");
  EXPECT_EQ(label_, kCandidate);
  expect_counts(0, 1, 0);
  EXPECT_TRUE(status_.events.empty());
}

TEST_F(CountedOutcome, LogsEveryUnknownFace) {
  recognize_with(-1, -1, "profile_right");
  recognize_with(-1, -1, "frontal");
  EXPECT_EQ(label_, kUnknown);
  expect_counts(2, 0, 0);
  EXPECT_EQ(event_messages(status_),
            (Messages{"Unknown face via profile_right", "Unknown face via frontal"}));
  EXPECT_EQ(state_.confirm_history, (std::deque<int>{1, 1, 1, 1, 0, 0}));
}

}  // namespace
}  // namespace halcyra
