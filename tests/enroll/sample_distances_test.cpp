#include "enroll/sample_distances.hpp"

#include <gtest/gtest.h>

#include "face_pipeline/lbph_model.hpp"
#include "face_pipeline/sample_loader.hpp"
#include "tests/support/photograph.hpp"

namespace halcyra {
namespace {

// Crops of the photograph that look like different pictures of a face.
cv::Mat crop(int number) {
  return photograph()(photographed_face() + cv::Point(6 * number, 4 * number)).clone();
}

// What the recogniser says of the crop when it knows these samples alone.
double recognised(const cv::Mat& probe, const std::vector<cv::Mat>& pictures) {
  std::vector<TrainingSample> samples;
  for (const cv::Mat& picture : pictures) samples.push_back(make_sample(picture, {}));
  int label = 0;
  double distance = 0.0;
  train_model(samples)->predict(make_probe(probe), label, distance);
  return distance;
}

TEST(SampleDistances, KnowNothingWithoutSamples) {
  const SampleDistances distances;
  EXPECT_EQ(distances.size(), 0U);
  EXPECT_FALSE(distances.nearest(crop(0)));
  EXPECT_FALSE(distances.nearest_other(crop(0), 0));
}

TEST(SampleDistances, AreWhatTheRecogniserSays) {
  SampleDistances distances;
  for (int number = 0; number < 4; ++number) distances.add(crop(3 * number));
  EXPECT_EQ(distances.size(), 4U);
  for (int number = 0; number < 4; ++number) {
    const auto nearest = distances.nearest(crop(3 * number + 1));
    ASSERT_TRUE(nearest);
    EXPECT_EQ(nearest->distance,
              recognised(crop(3 * number + 1), {crop(0), crop(3), crop(6), crop(9)}));
  }
}

TEST(SampleDistances, NameTheNearestSample) {
  SampleDistances distances;
  for (int number = 0; number < 4; ++number) distances.add(crop(3 * number));
  for (std::size_t number = 0; number < 4; ++number) {
    EXPECT_EQ(distances.nearest(crop(3 * static_cast<int>(number)))->index, number);
  }
}

TEST(SampleDistances, LeaveOneOut) {
  SampleDistances distances;
  for (int number = 0; number < 3; ++number) distances.add(crop(3 * number));
  const auto other = distances.nearest_other(crop(3), 1);
  ASSERT_TRUE(other);
  EXPECT_NE(other->index, 1U);
  EXPECT_EQ(other->distance, recognised(crop(3), {crop(0), crop(6)}));
}

TEST(SampleDistances, OfTheOnlySampleAreToNoOther) {
  SampleDistances distances;
  distances.add(crop(0));
  EXPECT_FALSE(distances.nearest_other(crop(0), 0));
  EXPECT_TRUE(distances.nearest_other(crop(0), 1));
}

TEST(SampleDistances, ForgetTheLastSample) {
  SampleDistances distances;
  distances.add(crop(0));
  distances.add(crop(6));
  distances.remove_last();
  EXPECT_EQ(distances.size(), 1U);
  EXPECT_EQ(distances.nearest(crop(6))->index, 0U);
  EXPECT_EQ(distances.nearest(crop(6))->distance, recognised(crop(6), {crop(0)}));
  distances.remove_last();
  EXPECT_FALSE(distances.nearest(crop(0)));
  distances.add(crop(6));
  EXPECT_EQ(distances.nearest(crop(6))->distance, recognised(crop(6), {crop(6)}));
}

TEST(SampleDistances, TakeSamplesOfAnySize) {
  SampleDistances distances;
  cv::Mat large;
  cv::resize(crop(0), large, {320, 200});
  distances.add(large);
  EXPECT_EQ(distances.nearest(crop(0))->distance, recognised(crop(0), {large}));
}

}  // namespace
}  // namespace halcyra
