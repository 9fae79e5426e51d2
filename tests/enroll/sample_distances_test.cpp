#include "enroll/sample_distances.hpp"

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "enroll/sample_limits.hpp"
#include "face_pipeline/lbph_model.hpp"
#include "tests/enroll/sample_set.hpp"

namespace halcyra {
namespace {

cv::Mat noise(int seed) {
  cv::Mat picture(100, 100, CV_8UC1);
  cv::RNG random(static_cast<std::uint64_t>(seed));
  random.fill(picture, cv::RNG::UNIFORM, 0, 256);
  return picture;
}

TEST(SampleDistancesTest, AreNoneWithoutSamples) {
  const SampleDistances samples;
  EXPECT_FALSE(samples.nearest(noise(1)));
  EXPECT_FALSE(samples.near_copy(noise(1)));
  EXPECT_TRUE(samples.distances(make_probe(noise(1))).empty());
}

TEST(SampleDistancesTest, AreThoseOfAModelOfEachSampleAlone) {
  SampleDistances samples;
  for (const int shift : {0, 3, 9}) samples.add(shifted_face(shift));
  const cv::Mat probe = make_probe(shifted_face(1));
  const std::vector<double> distances = samples.distances(probe);
  ASSERT_EQ(distances.size(), 3U);
  std::size_t index = 0;
  for (const int shift : {0, 3, 9}) {
    SampleDistances alone;
    alone.add(shifted_face(shift));
    EXPECT_DOUBLE_EQ(distances[index++], alone.distances(probe).front()) << shift;
  }
  EXPECT_LT(distances[0], distances[2]);
}

TEST(SampleDistancesTest, LeaveTheGivenSampleOut) {
  SampleDistances samples;
  for (const int shift : {0, 1, 9}) samples.add(shifted_face(shift));
  EXPECT_EQ(samples.nearest(shifted_face(0))->index, 0U);
  EXPECT_EQ(samples.nearest_other(shifted_face(0), 0)->index, 1U);
  SampleDistances one;
  one.add(shifted_face(0));
  EXPECT_FALSE(one.nearest_other(shifted_face(0), 0));
}

TEST(SampleDistancesTest, ForgetTheLastSample) {
  SampleDistances samples;
  samples.add(shifted_face(0));
  samples.add(shifted_face(9));
  samples.remove_last();
  EXPECT_EQ(samples.nearest(shifted_face(9))->index, 0U);
  samples.remove_last();
  EXPECT_FALSE(samples.nearest(shifted_face(9)));
}

TEST(NearCopy, IsTheSamePictureHoweverFarItIsFromItself) {
  // Noise of few grey levels, which equalising changes a lot.
  const cv::Mat flat = noise(1) / 64 + 100;
  SampleDistances samples;
  samples.add(noise(2));
  samples.add(flat);
  ASSERT_GT(samples.distances(make_probe(flat))[1], kNearCopyDistance);
  ASSERT_TRUE(samples.near_copy(flat));
  EXPECT_EQ(samples.near_copy(flat)->index, 1U);
}

TEST(NearCopy, IsAnythingNearerThanTheLimit) {
  // The photographed face in pictures of which one has been made a little brighter.
  SampleDistances samples;
  samples.add(noise(2));
  samples.add(shifted_face(0));
  const cv::Mat brighter = shifted_face(0) + 1;
  ASSERT_LT(samples.nearest(brighter)->distance, kNearCopyDistance);
  ASSERT_TRUE(samples.near_copy(brighter));
  EXPECT_EQ(samples.near_copy(brighter)->index, 1U);
}

TEST(NearCopy, IsNoneOfWhatIsUnlikeAllSamples) {
  SampleDistances samples;
  samples.add(noise(2));
  samples.add(shifted_face(0));
  ASSERT_GT(samples.nearest(shifted_face(30))->distance, kNearCopyDistance);
  EXPECT_FALSE(samples.near_copy(shifted_face(30)));
}

}  // namespace
}  // namespace halcyra
