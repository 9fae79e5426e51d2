#include "enroll/sample_taker.hpp"

#include <gtest/gtest.h>

#include "tests/enroll/enrolment_moments.hpp"

namespace halcyra {
namespace {

using std::chrono::milliseconds;

class SampleTaker : public ::testing::Test {
 protected:
  Obstacle obstacle() const { return judge(progress_, observation_, kNow).obstacle; }

  EnrolmentProgress progress_ = running_enrolment();
  Observation observation_ = observation_of(good_face());
};

TEST_F(SampleTaker, TakesAGoodFaceOfAWantedPose) {
  for (const char* detector : {"frontal", "profile_left", "profile_right"}) {
    observation_ = observation_of(good_face(detector));
    EXPECT_EQ(obstacle(), Obstacle::kNone) << detector;
  }
}

TEST_F(SampleTaker, TakesNothingWhereNobodyIs) {
  observation_.faces.clear();
  EXPECT_EQ(obstacle(), Obstacle::kNobody);
}

TEST_F(SampleTaker, TakesNothingOfTwoPeople) {
  observation_.faces.push_back(good_face());
  EXPECT_EQ(obstacle(), Obstacle::kSeveralPeople);
}

TEST_F(SampleTaker, TakesNothingThatTheGateRejects) {
  for (const char* verdict :
       {"too_small", "too_dark", "too_bright", "low_contrast", "too_blurry", "no_face"}) {
    observation_.faces.front().quality = verdict;
    EXPECT_EQ(obstacle(), Obstacle::kPoorQuality) << verdict;
  }
}

TEST_F(SampleTaker, TakesOneSampleLessThanWantedAndThenNoMore) {
  progress_of(progress_, Pose::kFront).taken = 9;
  EXPECT_EQ(obstacle(), Obstacle::kNone);
  progress_of(progress_, Pose::kFront).taken = 10;
  EXPECT_EQ(obstacle(), Obstacle::kPoseNotWanted);
}

TEST_F(SampleTaker, TakesNothingOfASkippedPose) {
  progress_of(progress_, Pose::kFront).skipped = true;
  EXPECT_EQ(obstacle(), Obstacle::kPoseNotWanted);
  observation_ = observation_of(good_face("profile_right"));
  EXPECT_EQ(obstacle(), Obstacle::kNone);
}

TEST_F(SampleTaker, TakesNothingOfAPoseThatItDoesNotKnow) {
  observation_ = observation_of(good_face("none"));
  EXPECT_EQ(obstacle(), Obstacle::kPoseNotWanted);
}

TEST_F(SampleTaker, TakesNoNearCopies) {
  observation_.near_copy = true;
  EXPECT_EQ(obstacle(), Obstacle::kNearCopy);
}

TEST_F(SampleTaker, WaitsABlinkAfterEachSample) {
  progress_.last_taken = kNow - milliseconds(399);
  EXPECT_EQ(obstacle(), Obstacle::kJustTaken);
  progress_.last_taken = kNow - milliseconds(400);
  EXPECT_EQ(obstacle(), Obstacle::kNone);
}

TEST_F(SampleTaker, WaitsThreeSecondsAfterTheFirstPicture) {
  progress_.first_picture = kNow - milliseconds(2999);
  EXPECT_EQ(obstacle(), Obstacle::kGettingReady);
  progress_.first_picture = kNow - milliseconds(3000);
  EXPECT_EQ(obstacle(), Obstacle::kNone);
}

TEST_F(SampleTaker, CountsTheSecondsDown) {
  const auto seconds_after = [&](int elapsed) {
    progress_.first_picture = kNow - milliseconds(elapsed);
    return judge(progress_, observation_, kNow).seconds_to_wait;
  };
  EXPECT_EQ(seconds_after(0), 3);
  EXPECT_EQ(seconds_after(999), 3);
  EXPECT_EQ(seconds_after(1000), 2);
  EXPECT_EQ(seconds_after(1999), 2);
  EXPECT_EQ(seconds_after(2000), 1);
  EXPECT_EQ(seconds_after(2999), 1);
  EXPECT_EQ(seconds_after(3000), 0);
}

TEST_F(SampleTaker, TakesNothingWhilePaused) {
  progress_.paused = true;
  EXPECT_EQ(obstacle(), Obstacle::kPaused);
}

TEST_F(SampleTaker, TakesNothingOnceWritingHasFailed) {
  progress_.write_failure = "The disk is full.";
  EXPECT_EQ(obstacle(), Obstacle::kWriteFailed);
}

TEST_F(SampleTaker, WaitsForASensorThatHasNeverDelivered) {
  progress_.first_picture.reset();
  progress_.last_picture.reset();
  observation_.faces.clear();
  EXPECT_EQ(obstacle(), Obstacle::kNoPicture);
}

TEST_F(SampleTaker, WaitsForASensorThatHasNotDeliveredForASecond) {
  progress_.last_picture = kNow - milliseconds(999);
  EXPECT_EQ(obstacle(), Obstacle::kNone);
  progress_.last_picture = kNow - milliseconds(1000);
  EXPECT_EQ(obstacle(), Obstacle::kNoPicture);
}

TEST_F(SampleTaker, IsDoneWhenEachPoseIsCompleteOrSkipped) {
  progress_of(progress_, Pose::kFront).taken = 10;
  progress_of(progress_, Pose::kLeft).skipped = true;
  EXPECT_NE(obstacle(), Obstacle::kDone);
  progress_of(progress_, Pose::kRight).taken = 10;
  EXPECT_EQ(obstacle(), Obstacle::kDone);
}

// A person who is done need not look after the sensor.
TEST_F(SampleTaker, IsDoneWhateverTheSensorDoes) {
  for (PoseProgress& pose : progress_.poses) pose.taken = 10;
  progress_.last_picture = kNow - milliseconds(5000);
  EXPECT_EQ(obstacle(), Obstacle::kDone);
}

TEST_F(SampleTaker, AsksForTheFirstWantedPose) {
  EXPECT_EQ(asked_pose(progress_), Pose::kFront);
  progress_of(progress_, Pose::kFront).taken = 10;
  EXPECT_EQ(asked_pose(progress_), Pose::kLeft);
  progress_of(progress_, Pose::kLeft).skipped = true;
  EXPECT_EQ(asked_pose(progress_), Pose::kRight);
  progress_of(progress_, Pose::kRight).skipped = true;
  EXPECT_EQ(asked_pose(progress_), std::nullopt);
  progress_of(progress_, Pose::kFront).taken = 9;
  EXPECT_EQ(asked_pose(progress_), Pose::kFront);
}

TEST_F(SampleTaker, CallsAFaceGoodThatIsTakenNowOrInABlink) {
  EXPECT_TRUE(face_is_good({Obstacle::kNone}));
  EXPECT_TRUE(face_is_good({Obstacle::kJustTaken}));
  for (const Obstacle other :
       {Obstacle::kWriteFailed, Obstacle::kDone, Obstacle::kNoPicture, Obstacle::kPaused,
        Obstacle::kGettingReady, Obstacle::kNobody, Obstacle::kSeveralPeople,
        Obstacle::kPoorQuality, Obstacle::kPoseNotWanted, Obstacle::kNearCopy}) {
    EXPECT_FALSE(face_is_good({other})) << static_cast<int>(other);
  }
}

TEST(ChosenFace, IsTheOnlyOneOrTheLargest) {
  EXPECT_EQ(chosen_face({}), std::nullopt);
  EXPECT_EQ(chosen_face({good_face()}), 0U);
  FaceInfo larger = good_face();
  larger.box.width += 1;
  EXPECT_EQ(chosen_face({good_face(), larger, good_face()}), 1U);
  EXPECT_EQ(chosen_face({good_face(), good_face()}), 0U);
}

}  // namespace
}  // namespace halcyra
