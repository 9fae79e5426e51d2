#include "enroll/instruction.hpp"

#include <gtest/gtest.h>

#include "tests/enroll/enrolment_moments.hpp"

namespace halcyra {
namespace {

class Instruction : public ::testing::Test {
 protected:
  std::string now() const {
    return instruction(progress_, observation_, judge(progress_, observation_, kNow));
  }

  EnrolmentProgress progress_ = running_enrolment();
  Observation observation_ = observation_of(good_face());
};

TEST_F(Instruction, AsksForThePosesOneAfterTheOther) {
  EXPECT_EQ(now(), "Look into the camera");
  progress_of(progress_, Pose::kFront).taken = 10;
  EXPECT_EQ(now(), "Turn your head until the camera sees your left cheek");
  progress_of(progress_, Pose::kLeft).skipped = true;
  EXPECT_EQ(now(), "Turn your head until the camera sees your right cheek");
  progress_of(progress_, Pose::kRight).taken = 10;
  EXPECT_EQ(now(), "Done");
}

TEST_F(Instruction, TurnsSomebodyWhoShowsTheOtherCheek) {
  progress_of(progress_, Pose::kFront).taken = 10;
  progress_of(progress_, Pose::kRight).taken = 10;
  EXPECT_EQ(now(), "Turn your head until the camera sees your left cheek");
  observation_.faces.front().detector_type = "profile_right";
  EXPECT_EQ(now(), "Turn your head the other way");
  progress_of(progress_, Pose::kLeft).taken = 10;
  progress_of(progress_, Pose::kRight).taken = 0;
  observation_.faces.front().detector_type = "profile_left";
  EXPECT_EQ(now(), "Turn your head the other way");
}

TEST_F(Instruction, StaysWhenNobodyIsInView) {
  observation_.faces.clear();
  EXPECT_EQ(now(), "Look into the camera");
}

TEST_F(Instruction, SaysHowAPoorPictureGetsBetter) {
  const std::pair<const char*, const char*> advice[] = {
      {"too_small", "Come closer"},
      {"too_dark", "More light, please"},
      {"too_bright", "Less light, please"},
      {"low_contrast", "Change the light, please"},
      {"too_blurry", "Hold still"}};
  for (const auto& [verdict, sentence] : advice) {
    observation_.faces.front().quality = verdict;
    EXPECT_EQ(now(), sentence) << verdict;
  }
}

TEST_F(Instruction, AsksTheOthersToLeave) {
  observation_.faces.push_back(good_face());
  EXPECT_EQ(now(), "Only one person, please");
}

TEST_F(Instruction, AsksForADifferentPicture) {
  observation_.near_copy = true;
  EXPECT_EQ(now(), "Move a little");
}

TEST_F(Instruction, CountsDown) {
  progress_.first_picture = kNow - std::chrono::milliseconds(1500);
  EXPECT_EQ(now(), "Get ready: 2");
}

TEST_F(Instruction, SaysHowAPauseEnds) {
  progress_.paused = true;
  EXPECT_EQ(now(), "Paused: press space to go on");
}

TEST_F(Instruction, WaitsForTheSensor) {
  progress_.last_picture = kNow - std::chrono::seconds(2);
  EXPECT_EQ(now(), "Waiting for the sensor");
}

TEST_F(Instruction, RepeatsWhyNothingCanBeWritten) {
  progress_.write_failure = "No samples can be written to here: No space left on device.";
  EXPECT_EQ(now(), progress_.write_failure);
}

}  // namespace
}  // namespace halcyra
