#include "face_pipeline/person_identity.hpp"

#include <limits>
#include <string>

#include <gtest/gtest.h>
#include <opencv2/core/types.hpp>

namespace halcyra {
namespace {

FaceInfo labelled(const std::string& label, int person_id) {
  FaceInfo face;
  face.label = label;
  face.person_id = person_id;
  return face;
}

TEST(IsOwnerLabel, LooksForTheNameAnywhereInItsOwnCase) {
  for (const char* owner : {"CandidateDorran", "ConfirmedDorran", "Dorran", "not Dorran yet"}) {
    EXPECT_TRUE(is_owner_label(owner)) << owner;
  }
  for (const char* other : {"Unknown", "", "dorran", "CONFIRMEDDORRAN", "Dorra", "Dor ran"}) {
    EXPECT_FALSE(is_owner_label(other)) << other;
  }
}

TEST(PersonDisplayName, IsTheOwnersNameForCandidatesToo) {
  EXPECT_EQ(person_display_name(labelled("ConfirmedDorran", 2)), "Dorran");
  EXPECT_EQ(person_display_name(labelled("CandidateDorran", 0)), "Dorran");
}

TEST(PersonDisplayName, IsTheNumberOfOthers) {
  EXPECT_EQ(person_display_name(labelled("Unknown", 1)), "Person 1");
  EXPECT_EQ(person_display_name(labelled("Unknown", 3)), "Person 3");
  EXPECT_EQ(person_display_name(labelled("dorran", 12)), "Person 12");
}

TEST(PersonDisplayName, IsUnknownWithoutANumber) {
  EXPECT_EQ(person_display_name(labelled("Unknown", 0)), "Unknown");
  EXPECT_EQ(person_display_name(labelled("Unknown", -1)), "Unknown");
  EXPECT_EQ(person_display_name(labelled("somebody", 0)), "Unknown");
}

const cv::Scalar kOwner(80, 230, 120, 0);
const cv::Scalar kPalette[] = {
    {80, 160, 245, 0}, {195, 110, 230, 0}, {55, 200, 220, 0}, {230, 170, 75, 0}, {150, 210, 95, 0}};

TEST(PersonColorFor, GoesRoundFiveColours) {
  for (int index = 0; index < 12; ++index) {
    EXPECT_EQ(person_color_for(index, "Unknown"), kPalette[index % 5]) << index;
  }
  const int largest = std::numeric_limits<int>::max();
  EXPECT_EQ(person_color_for(largest, "Unknown"), kPalette[largest % 5]);
}

TEST(PersonColorFor, TakesNegativeIndicesAsZero) {
  for (const int index : {-1, -2, -5, -6, std::numeric_limits<int>::min()}) {
    EXPECT_EQ(person_color_for(index, ""), kPalette[0]) << index;
  }
}

TEST(PersonColorFor, IsTheOwnersColourWhateverTheIndex) {
  for (const int index : {-1, 0, 3, 7}) {
    EXPECT_EQ(person_color_for(index, "CandidateDorran"), kOwner);
    EXPECT_EQ(person_color_for(index, "ConfirmedDorran"), kOwner);
  }
  EXPECT_EQ(person_color_for(0, "confirmeddorran"), kPalette[0]);
}

}  // namespace
}  // namespace halcyra
