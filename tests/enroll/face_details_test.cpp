#include "enroll/face_details.hpp"

#include <gtest/gtest.h>

#include "tests/enroll/enrolment_moments.hpp"

namespace halcyra {
namespace {

std::string text_of(const FaceDetail& detail) {
  return detail.name + "|" + detail.value + "|" + detail.limit + (detail.missed ? "|missed" : "");
}

std::vector<std::string> texts_of(const FaceInfo& face, std::optional<double> nearest = {},
                                  bool near_copy = false) {
  Observation observation = observation_of(face);
  observation.nearest = nearest;
  observation.near_copy = near_copy;
  std::vector<std::string> texts;
  for (const FaceDetail& detail : face_details(face, running_enrolment(), observation)) {
    texts.push_back(text_of(detail));
  }
  return texts;
}

TEST(FaceDetails, GiveEachMeasureBesideItsLimit) {
  const std::vector<std::string> expected = {
      "size|120 x 120|at least 80", "brightness|128|35 to 220", "contrast|43|at least 20",
      "sharpness|143|at least 60",  "pose|front|wanted",        "nearest|48|at least 30"};
  EXPECT_EQ(texts_of(good_face(), 48.9), expected);
}

TEST(FaceDetails, LeaveOutADistanceThatIsNotKnown) { EXPECT_EQ(texts_of(good_face()).size(), 5U); }

TEST(FaceDetails, MarkTheLimitsThatAreMissed) {
  FaceInfo face = good_face("profile_left");
  face.box.height = 79;
  face.brightness = 34.99;
  face.contrast = 19.99;
  face.sharpness = 59.99;
  const std::vector<std::string> expected = {"size|120 x 79|at least 80|missed",
                                             "brightness|34|35 to 220|missed",
                                             "contrast|19|at least 20|missed",
                                             "sharpness|59|at least 60|missed",
                                             "pose|left|wanted",
                                             "nearest|29|at least 30|missed"};
  EXPECT_EQ(texts_of(face, 29.99, true), expected);
}

// A picture that is there already may be farther than that from itself.
TEST(FaceDetails, MarkTheDistanceOfEveryNearCopy) {
  EXPECT_EQ(texts_of(good_face(), 36.0, true)[5], "nearest|36|at least 30|missed");
}

TEST(FaceDetails, DoNotRoundTooMuchLightDownToItsLimit) {
  FaceInfo face = good_face();
  face.brightness = 220.1;
  EXPECT_EQ(texts_of(face)[1], "brightness|221|35 to 220|missed");
  face.brightness = 220.0;
  EXPECT_EQ(texts_of(face)[1], "brightness|220|35 to 220");
}

TEST(FaceDetails, SayWhyAPoseIsNotWanted) {
  EnrolmentProgress progress = running_enrolment();
  progress_of(progress, Pose::kLeft).taken = 10;
  progress_of(progress, Pose::kRight).skipped = true;
  const auto pose_of = [&](const char* detector) {
    return text_of(face_details(good_face(detector), progress, Observation())[4]);
  };
  EXPECT_EQ(pose_of("profile_left"), "pose|left|complete|missed");
  EXPECT_EQ(pose_of("profile_right"), "pose|right|skipped|missed");
  EXPECT_EQ(pose_of("none"), "pose|none||missed");
}

}  // namespace
}  // namespace halcyra
