#include "virtual_kinect/image_cache.hpp"

#include <string>

#include <gtest/gtest.h>

namespace halcyra::virtual_kinect {
namespace {

class ImageCacheTest : public testing::Test {
 protected:
  // An image of the given size that knows how many were loaded before it.
  StreamImage get(ImageCache& cache, const std::string& key, int bytes) {
    return cache.get(key, [this, bytes] {
      StreamImage image;
      image.pixels = cv::Mat(1, bytes, CV_8UC1, cv::Scalar(loads_));
      ++loads_;
      return image;
    });
  }

  int loads_ = 0;
};

TEST_F(ImageCacheTest, LoadsAnImageOnceWithinTheBudget) {
  ImageCache cache(30);
  EXPECT_EQ(get(cache, "a", 10).pixels.at<unsigned char>(0), 0);
  EXPECT_EQ(get(cache, "b", 20).pixels.at<unsigned char>(0), 1);
  EXPECT_EQ(get(cache, "a", 10).pixels.at<unsigned char>(0), 0);
  EXPECT_EQ(get(cache, "b", 20).pixels.at<unsigned char>(0), 1);
  EXPECT_EQ(loads_, 2);
}

TEST_F(ImageCacheTest, LoadsAgainWhatIsBeyondTheBudget) {
  ImageCache cache(30);
  get(cache, "a", 10);
  get(cache, "b", 21);
  EXPECT_EQ(get(cache, "b", 21).pixels.cols, 21);
  EXPECT_EQ(loads_, 3);
  get(cache, "c", 20);
  get(cache, "c", 20);
  get(cache, "a", 10);
  EXPECT_EQ(loads_, 4);
}

TEST_F(ImageCacheTest, CountsTheBytesOfEveryChannel) {
  ImageCache cache(40);
  const auto floats = [this] {
    ++loads_;
    StreamImage image;
    image.pixels = cv::Mat(1, 11, CV_32FC1, cv::Scalar(0));
    return image;
  };
  cache.get("a", floats);
  cache.get("a", floats);
  EXPECT_EQ(loads_, 2);
}

TEST_F(ImageCacheTest, RemembersWhatHasNoPixels) {
  ImageCache cache(0);
  get(cache, "a", 0);
  EXPECT_TRUE(get(cache, "a", 0).pixels.empty());
  EXPECT_EQ(loads_, 1);
  get(cache, "b", 1);
  get(cache, "b", 1);
  EXPECT_EQ(loads_, 3);
}

}  // namespace
}  // namespace halcyra::virtual_kinect
