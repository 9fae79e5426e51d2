#include "enroll/pose.hpp"

#include <gtest/gtest.h>

#include "enroll/face_search.hpp"
#include "tests/enroll/rendered_owner.hpp"

namespace halcyra {
namespace {

TEST(Pose, HasTheFolderOfItsStage) {
  EXPECT_EQ(stage_name(Pose::kFront), "front");
  EXPECT_EQ(stage_name(Pose::kLeft), "left");
  EXPECT_EQ(stage_name(Pose::kRight), "right");
}

TEST(Pose, IsKnownForTheThreeDetectorsOnly) {
  EXPECT_EQ(pose_found_by("frontal"), Pose::kFront);
  EXPECT_EQ(pose_found_by("profile_left"), Pose::kLeft);
  EXPECT_EQ(pose_found_by("profile_right"), Pose::kRight);
  for (const char* other : {"none", "", "front", "frontal_or_profile"}) {
    EXPECT_EQ(pose_found_by(other), std::nullopt) << other;
  }
}

// Who faces the picture's left edge shows the camera the left cheek.
TEST(Pose, IsNamedAfterTheCheekThatTheCameraSees) {
  const virtual_kinect::room::Renderer renderer(virtual_kinect::room::kUsualSeed);
  FaceDetectors detectors;
  std::string complaint;
  ASSERT_TRUE(load_face_search(detectors, Options(), complaint)) << complaint;
  const std::pair<float, Pose> turned[] = {
      {0.0F, Pose::kFront}, {-58.0F, Pose::kLeft}, {58.0F, Pose::kRight}};
  for (const auto& [yaw, pose] : turned) {
    SCOPED_TRACE(yaw);
    cv::Mat grey;
    cv::cvtColor(picture_of_owner(renderer, {yaw}, 0), grey, cv::COLOR_BGR2GRAY);
    const std::vector<FaceInfo> faces = search_faces(detectors, grey, Options());
    ASSERT_EQ(faces.size(), 1U);
    EXPECT_EQ(pose_found_by(faces.front().detector_type), pose);
    EXPECT_EQ(faces.front().quality, "accepted");
  }
}

}  // namespace
}  // namespace halcyra
