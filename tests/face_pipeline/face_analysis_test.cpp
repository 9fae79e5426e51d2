#include "face_pipeline/face_analysis.hpp"

#include <algorithm>
#include <cfloat>
#include <deque>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/face.hpp>

#include "app/run_state/runtime_status.hpp"
#include "face_pipeline/person_identity.hpp"
#include "face_pipeline/quality_gate.hpp"
#include "tests/face_pipeline/failing_model.hpp"
#include "tests/support/event_messages.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

using Messages = std::vector<std::string>;
using Faces = std::vector<FaceInfo>;

cv::Mat noise(int width, int height) {
  cv::Mat grey(height, width, CV_8UC1);
  cv::randu(grey, 0, 256);
  return grey;
}

// Noise, of which every crop of at least 80 x 80 pixels is accepted.
class AnalyzeFaces : public ::testing::Test {
 protected:
  Faces analyze(const std::vector<Detection>& detections) {
    return analyze_faces(detections, grey_, state_, status_, options_);
  }
  void expect_counts(int unknown, int candidate, int confirmed) {
    EXPECT_EQ(state_.cc_unknown_predictions, unknown);
    EXPECT_EQ(state_.cc_candidate_dorran_predictions, candidate);
    EXPECT_EQ(state_.cc_confirmed_dorran_predictions, confirmed);
  }

  cv::Mat grey_ = noise(400, 300);
  RecognitionState state_;
  RuntimeStatus status_;
  Options options_;
};

Detection good(int x) { return {{x, 20, 90, 100}, "frontal"}; }
Detection small(int x) { return {{x, 20, 79, 100}, "profile_left"}; }

// ---- Boxes and measures.

TEST_F(AnalyzeFaces, FindsNothingInNothing) {
  EXPECT_TRUE(analyze({}).empty());
  expect_counts(0, 0, 0);
  EXPECT_EQ(state_.cc_last_face_box, "none");
}

TEST_F(AnalyzeFaces, ClampsBoxesToTheImage) {
  const Faces faces = analyze({{{-30, -10, 130, 110}, "frontal"},
                               {{310, 200, 200, 200}, "frontal"},
                               {{-5, -5, 1000, 1000}, "frontal"},
                               {{20, 30, 100, 120}, "frontal"},
                               {{399, 299, 50, 50}, "frontal"}});
  ASSERT_EQ(faces.size(), 5U);
  EXPECT_EQ(faces[0].box, cv::Rect(0, 0, 100, 100));
  EXPECT_EQ(faces[1].box, cv::Rect(310, 200, 90, 100));
  EXPECT_EQ(faces[2].box, cv::Rect(0, 0, 400, 300));
  EXPECT_EQ(faces[3].box, cv::Rect(20, 30, 100, 120));
  EXPECT_EQ(faces[4].box, cv::Rect(399, 299, 1, 1));
}

TEST_F(AnalyzeFaces, LeavesNoTraceOfDetectionsOutsideTheImage) {
  const Faces faces = analyze({{{400, 0, 90, 90}, "frontal"},
                               {{0, 300, 90, 90}, "frontal"},
                               {{-90, 0, 90, 90}, "frontal"},
                               {{0, -90, 90, 90}, "frontal"},
                               {{1000, 1000, 90, 90}, "frontal"},
                               {{10, 10, 0, 90}, "frontal"},
                               {{10, 10, 90, -1}, "frontal"}});
  EXPECT_TRUE(faces.empty());
  expect_counts(0, 0, 0);
  EXPECT_EQ(state_.cc_last_face_box, "none");
  EXPECT_EQ(state_.cc_last_quality, "no_face");
  EXPECT_TRUE(status_.events.empty());
}

TEST_F(AnalyzeFaces, MeasuresTheClampedCrop) {
  const Faces faces = analyze({{{350, 150, 100, 300}, "profile_right"}, good(100)});
  ASSERT_EQ(faces.size(), 2U);
  for (const FaceInfo& face : faces) {
    // A crop that still saw its surroundings would have a different Laplacian at its border.
    const FaceMeasures measures = measure_face(grey_(face.box).clone());
    EXPECT_EQ(face.brightness, measures.brightness);
    EXPECT_EQ(face.contrast, measures.contrast);
    EXPECT_EQ(face.sharpness, measures.sharpness);
  }
  EXPECT_EQ(faces[0].quality, "too_small");
  EXPECT_EQ(faces[0].detector_type, "profile_right");
  EXPECT_EQ(faces[1].quality, "accepted");
  EXPECT_EQ(faces[1].detector_type, "frontal");
}

TEST_F(AnalyzeFaces, JudgesTheLightOfEachCrop) {
  grey_(cv::Rect(0, 0, 100, 100)).setTo(cv::Scalar(10));
  grey_(cv::Rect(100, 0, 100, 100)).setTo(cv::Scalar(250));
  grey_(cv::Rect(200, 0, 100, 100)).setTo(cv::Scalar(128));
  cv::Mat soft = grey_(cv::Rect(0, 100, 100, 100));
  for (int x = 0; x < 100; ++x) soft.col(x).setTo(cv::Scalar(2 * x));
  std::vector<std::string> qualities;
  for (const FaceInfo& face : analyze({{{0, 0, 100, 100}, "frontal"},
                                       {{100, 0, 100, 100}, "frontal"},
                                       {{200, 0, 100, 100}, "frontal"},
                                       {{0, 100, 100, 100}, "frontal"}})) {
    qualities.push_back(face.quality);
  }
  EXPECT_EQ(qualities,
            (std::vector<std::string>{"too_dark", "too_bright", "low_contrast", "too_blurry"}));
}

TEST_F(AnalyzeFaces, LeavesTheImageAsItIs) {
  const cv::Mat before = grey_.clone();
  analyze({good(0), small(100)});
  EXPECT_TRUE(same_pixels(grey_, before));
}

// ---- Numbers and colours.

TEST_F(AnalyzeFaces, NumbersAndColoursTheFacesThatItKeeps) {
  const Faces faces = analyze({good(0),
                               {{500, 0, 90, 90}, "frontal"},
                               small(100),
                               good(200),
                               small(10),
                               good(20),
                               good(30),
                               good(40)});
  ASSERT_EQ(faces.size(), 7U);
  for (int i = 0; i < 7; ++i) {
    const FaceInfo& face = faces[static_cast<std::size_t>(i)];
    EXPECT_EQ(face.person_id, i + 1);
    EXPECT_EQ(face.color, person_color_for(i % 5, "Unknown"));
    EXPECT_EQ(face.label, "Unknown");
  }
  EXPECT_EQ(faces[2].box.x, 200);
  EXPECT_EQ(faces[2].color, cv::Scalar(55, 200, 220, 0));
  EXPECT_EQ(person_display_name(faces[2]), "Person 3");
}

TEST_F(AnalyzeFaces, NumbersEachFrameAnew) {
  analyze({good(0), good(100)});
  EXPECT_EQ(analyze({good(50)})[0].person_id, 1);
}

// ---- Without a model.

TEST_F(AnalyzeFaces, CountsOnlyRejectedFacesWithoutAModel) {
  const Faces faces = analyze({good(0)});
  expect_counts(0, 0, 0);
  EXPECT_EQ(faces[0].stage, "unknown");
  EXPECT_EQ(faces[0].confidence, 0.0);
  analyze({small(0), good(100), small(200)});
  expect_counts(2, 0, 0);
  EXPECT_TRUE(state_.confirm_history.empty());
  EXPECT_TRUE(status_.events.empty());
}

TEST_F(AnalyzeFaces, RemembersTheLastFace) {
  analyze({good(5), {{-21, 60, 100, 1000}, "profile_right"}, {{400, 0, 9, 9}, "frontal"}});
  EXPECT_EQ(state_.cc_last_label, "Unknown");
  EXPECT_EQ(state_.cc_last_detector_type, "profile_right");
  EXPECT_EQ(state_.cc_last_face_box, "0,60,79x240");
  EXPECT_EQ(state_.cc_last_confidence, 0.0);
  EXPECT_EQ(state_.cc_last_quality, "too_small");
  EXPECT_EQ(state_.cc_last_stage, "unknown");
  analyze({});
  EXPECT_EQ(state_.cc_last_face_box, "0,60,79x240");
  analyze({good(5)});
  EXPECT_EQ(state_.cc_last_face_box, "5,20,90x100");
  EXPECT_EQ(state_.cc_last_quality, "accepted");
}

// ---- With a model.

class AnalyzeFacesWithModel : public AnalyzeFaces {
 protected:
  void SetUp() override {
    state_.samples = {{noise(160, 160), 1, "front/1.png", "front"}};
    state_.recognizer = cv::face::LBPHFaceRecognizer::create(1, 8, 8, 8, DBL_MAX);
    state_.recognizer->train(std::vector<cv::Mat>{state_.samples[0].image}, std::vector<int>{1});
  }
  void let_thresholds_be(double candidate, double confirmed) {
    options_.candidate_threshold = candidate;
    options_.confirmed_threshold = confirmed;
  }
};

TEST_F(AnalyzeFacesWithModel, RecognisesAcceptedFaces) {
  let_thresholds_be(DBL_MAX, DBL_MAX);
  state_.confirm_history = {1, 1, 1, 1};
  const Faces faces = analyze({good(100)});
  ASSERT_EQ(faces.size(), 1U);
  EXPECT_EQ(faces[0].label, "ConfirmedDorran");
  EXPECT_EQ(faces[0].stage, "front");
  EXPECT_GT(faces[0].confidence, 0.0);
  EXPECT_EQ(faces[0].color, cv::Scalar(80, 230, 120, 0));
  expect_counts(0, 0, 1);
  EXPECT_EQ(event_messages(status_), Messages{"Identity confirmed: Dorran via frontal"});
  EXPECT_EQ(state_.cc_last_label, "ConfirmedDorran");
  EXPECT_EQ(state_.cc_last_stage, "front");
  EXPECT_EQ(state_.cc_last_confidence, faces[0].confidence);
}

TEST_F(AnalyzeFacesWithModel, DoesNotMatchRejectedFaces) {
  let_thresholds_be(DBL_MAX, DBL_MAX);
  const Faces faces = analyze({small(0)});
  EXPECT_EQ(faces[0].label, "Unknown");
  EXPECT_EQ(faces[0].stage, "unknown");
  EXPECT_EQ(faces[0].confidence, 0.0);
  expect_counts(1, 0, 0);
  EXPECT_TRUE(state_.confirm_history.empty());
  EXPECT_TRUE(status_.events.empty());
}

TEST_F(AnalyzeFacesWithModel, LetsAllFacesOfAFrameVoteInTheirOrder) {
  let_thresholds_be(DBL_MAX, DBL_MAX);
  const Faces faces = analyze({good(0), good(10), small(0), good(20), good(30), good(40)});
  ASSERT_EQ(faces.size(), 6U);
  EXPECT_EQ(faces[4].label, "CandidateDorran");
  EXPECT_EQ(faces[5].label, "ConfirmedDorran");
  EXPECT_EQ(state_.confirm_history, (std::deque<int>{1, 1, 1, 1, 1}));
  expect_counts(1, 4, 1);
}

TEST_F(AnalyzeFacesWithModel, KeepsVotesAndCountsOverFrames) {
  let_thresholds_be(DBL_MAX, DBL_MAX);
  for (int frame = 0; frame < 4; ++frame) {
    EXPECT_EQ(analyze({good(frame)})[0].label, "CandidateDorran") << frame;
  }
  EXPECT_EQ(analyze({good(9)})[0].label, "ConfirmedDorran");
  let_thresholds_be(-1, -1);
  EXPECT_EQ(analyze({good(9)})[0].label, "Unknown");
  expect_counts(1, 4, 1);
  EXPECT_EQ(event_messages(status_),
            (Messages{"Identity confirmed: Dorran via frontal", "Unknown face via frontal"}));
}

TEST_F(AnalyzeFacesWithModel, ColoursUnknownFacesByTheirPlace) {
  let_thresholds_be(-1, -1);
  const Faces faces = analyze({good(0), good(100)});
  EXPECT_EQ(faces[1].color, cv::Scalar(195, 110, 230, 0));
  EXPECT_EQ(faces[1].stage, "front");
}

// ---- Several faces side by side.

class AnalyzeSeveralFaces : public AnalyzeFacesWithModel {
 protected:
  void SetUp() override {
    AnalyzeFacesWithModel::SetUp();
    state_.samples.push_back({noise(160, 160), 1, "left/1.png", "left"});
    state_.samples.push_back({noise(160, 160), 1, "right/1.png", "right"});
    threads_ = cv::getNumThreads();
    cv::setNumThreads(4);
    grey_({320, 200, 80, 100}).setTo(cv::Scalar(10));
    let_some_be_known();
  }
  void TearDown() override { cv::setNumThreads(threads_); }

  // Four accepted faces of all detectors, with a small and a dark one and one outside between them.
  static std::vector<Detection> mixed() {
    return {good(0),
            {{100, 20, 100, 120}, "profile_left"},
            small(60),
            {{150, 90, 130, 140}, "profile_right"},
            {{320, 200, 80, 100}, "frontal"},
            {{900, 0, 90, 90}, "frontal"},
            {{200, 10, 120, 110}, "profile_left"}};
  }
  // Thresholds between the faces, so that all labels appear and each vote matters.
  void let_some_be_known() {
    RecognitionState unused = state_;
    RuntimeStatus nobody_reads;
    std::vector<double> distances;
    for (const FaceInfo& face : analyze_faces(mixed(), grey_, unused, nobody_reads, options_)) {
      if (face.quality == "accepted") distances.push_back(face.confidence);
    }
    std::sort(distances.begin(), distances.end());
    let_thresholds_be(distances[2], distances[1]);
    options_.confirm_window = 4;
    options_.confirm_required = 2;
  }
  // A black or white corner, for which a failing model throws.
  void mark(const Detection& face, int grey_level) {
    grey_({face.box.x, face.box.y, 20, 20}).setTo(cv::Scalar(grey_level));
  }

  int threads_ = 0;
};

void expect_same_state(const RecognitionState& state, const RecognitionState& expected) {
  EXPECT_EQ(state.confirm_history, expected.confirm_history);
  EXPECT_EQ(state.cc_unknown_predictions, expected.cc_unknown_predictions);
  EXPECT_EQ(state.cc_candidate_dorran_predictions, expected.cc_candidate_dorran_predictions);
  EXPECT_EQ(state.cc_confirmed_dorran_predictions, expected.cc_confirmed_dorran_predictions);
  EXPECT_EQ(state.cc_last_label, expected.cc_last_label);
  EXPECT_EQ(state.cc_last_detector_type, expected.cc_last_detector_type);
  EXPECT_EQ(state.cc_last_face_box, expected.cc_last_face_box);
  EXPECT_EQ(state.cc_last_confidence, expected.cc_last_confidence);
  EXPECT_EQ(state.cc_last_quality, expected.cc_last_quality);
  EXPECT_EQ(state.cc_last_stage, expected.cc_last_stage);
}

void expect_same_face(const FaceInfo& face, const FaceInfo& expected) {
  EXPECT_EQ(face.box, expected.box);
  EXPECT_EQ(face.detector_type, expected.detector_type);
  EXPECT_EQ(face.label, expected.label);
  EXPECT_EQ(face.stage, expected.stage);
  EXPECT_EQ(face.confidence, expected.confidence);
  EXPECT_EQ(face.sharpness, expected.sharpness);
  EXPECT_EQ(face.brightness, expected.brightness);
  EXPECT_EQ(face.contrast, expected.contrast);
  EXPECT_EQ(face.quality, expected.quality);
}

TEST_F(AnalyzeSeveralFaces, GivesWhatTheyGiveOneAfterTheOther) {
  RecognitionState one_by_one = state_;
  RuntimeStatus status_one_by_one;
  for (int frame = 0; frame < 20; ++frame) {
    Faces expected;
    for (const Detection& detection : mixed()) {
      const Faces alone =
          analyze_faces({detection}, grey_, one_by_one, status_one_by_one, options_);
      expected.insert(expected.end(), alone.begin(), alone.end());
    }
    const Faces faces = analyze(mixed());
    ASSERT_EQ(faces.size(), expected.size());
    for (std::size_t i = 0; i < faces.size(); ++i) expect_same_face(faces[i], expected[i]);
    expect_same_state(state_, one_by_one);
    EXPECT_EQ(event_messages(status_), event_messages(status_one_by_one));
  }
  EXPECT_GT(state_.cc_unknown_predictions, 40) << "rejected faces and strangers";
  EXPECT_GT(state_.cc_candidate_dorran_predictions, 0);
  EXPECT_GT(state_.cc_confirmed_dorran_predictions, 0);
}

TEST_F(AnalyzeSeveralFaces, GivesTheSameWithoutAModel) {
  state_.recognizer = nullptr;
  RecognitionState one_by_one = state_;
  for (const Detection& detection : mixed()) {
    analyze_faces({detection}, grey_, one_by_one, status_, options_);
  }
  EXPECT_EQ(analyze(mixed()).size(), 6U);
  expect_same_state(state_, one_by_one);
  expect_counts(2, 0, 0);
  EXPECT_TRUE(status_.events.empty());
}

TEST_F(AnalyzeSeveralFaces, ThrowsForTheFirstOneThatFailsOnceThoseBeforeItAreDone) {
  state_.recognizer = cv::makePtr<FailingModel>(state_.recognizer);
  std::vector<Detection> detections = mixed();
  mark(detections[3], 255);
  mark(detections[6], 0);
  RecognitionState first_three = state_;
  RuntimeStatus status_of_three;
  analyze_faces({detections[0], detections[1], detections[2]}, grey_, first_three, status_of_three,
                options_);
  std::string thrown;
  try {
    analyze(detections);
  } catch (const std::runtime_error& error) {
    thrown = error.what();
  }
  EXPECT_EQ(thrown, "white");
  expect_same_state(state_, first_three);
  EXPECT_EQ(state_.cc_last_face_box, "60,20,79x100");
  EXPECT_EQ(event_messages(status_), event_messages(status_of_three));
}

TEST_F(AnalyzeSeveralFaces, DoesNotShowRejectedOnesToTheModel) {
  state_.recognizer = cv::makePtr<FailingModel>(state_.recognizer);
  for (const int x : {0, 100, 200}) mark(small(x), 0);
  EXPECT_EQ(analyze({small(0), small(100), small(200)}).size(), 3U);
  expect_counts(3, 0, 0);
}

}  // namespace
}  // namespace halcyra
