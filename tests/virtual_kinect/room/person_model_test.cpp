#include "virtual_kinect/room/person_model.hpp"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace halcyra::virtual_kinect::room {
namespace {

// Walks to the picture's right, so that the left foot touches down at stride 0.
Posture walking(float stride) {
  Posture posture;
  posture.x = stride * kStepLength;
  posture.body_yaw = 90.0F;
  posture.stride = stride;
  posture.stride_width = 1.0F;
  return posture;
}

std::vector<Vec3> ankles(const PersonModel& model, const Posture& posture) {
  std::vector<Vec3> result;
  for (const PlacedPart& part : placed_parts(model, posture)) {
    if (part.surface == &model.body.shoe) result.push_back(part.pose.origin);
  }
  return result;
}

class PersonModelTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { owner_ = new PersonModel(make_person(look_of(Person::kOwner))); }
  static void TearDownTestSuite() { delete owner_; }

  static PersonModel* owner_;
};

PersonModel* PersonModelTest::owner_ = nullptr;

TEST_F(PersonModelTest, KeepsOneFootWhereItIsWhileThePersonWalks) {
  for (const float first_step : {0.0F, 1.0F, 2.0F}) {
    const std::size_t foot = first_step == 1.0F ? 1 : 0;
    const Vec3 down = ankles(*owner_, walking(first_step + 0.01F))[foot];
    for (const float t : {0.25F, 0.5F, 0.75F, 0.99F}) {
      const Vec3 later = ankles(*owner_, walking(first_step + t))[foot];
      EXPECT_LT(length(later - down), 1.0F) << "stride " << first_step + t;
    }
  }
}

TEST_F(PersonModelTest, LiftsTheOtherFoot) {
  const std::vector<Vec3> feet = ankles(*owner_, walking(0.5F));
  EXPECT_LT(feet[1].y, feet[0].y - 50.0F);
}

TEST_F(PersonModelTest, StandsOnBothFeet) {
  Posture posture;
  posture.stride = 0.3F;
  const std::vector<Vec3> feet = ankles(*owner_, posture);
  EXPECT_FLOAT_EQ(feet[0].y, feet[1].y);
  EXPECT_FLOAT_EQ(feet[0].z, feet[1].z);
}

TEST_F(PersonModelTest, PutsTheHeadWhereItSaysItIs) {
  for (const Posture& posture : {walking(0.0F), walking(0.4F), Posture{}}) {
    const std::vector<PlacedPart> parts = placed_parts(*owner_, posture);
    const auto head = std::find_if(parts.begin(), parts.end(), [](const PlacedPart& part) {
      return part.surface == &owner_->head;
    });
    ASSERT_NE(head, parts.end());
    EXPECT_LT(length(head->pose.origin - head_position(owner_->look.body, posture)), 0.01F);
  }
}

}  // namespace
}  // namespace halcyra::virtual_kinect::room
