#include "face_pipeline/face_analysis.hpp"

#include <cfloat>
#include <deque>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/face.hpp>

#include "app/run_state/runtime_status.hpp"
#include "face_pipeline/person_identity.hpp"
#include "face_pipeline/quality_gate.hpp"
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

}  // namespace
}  // namespace halcyra
