#include "face_pipeline/haar/image_pyramid.hpp"

#include <cstddef>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "tests/face_pipeline/haar/sample_pictures.hpp"

namespace halcyra::haar {
namespace {

std::size_t place(const PyramidLayer& layer, int x, int y) {
  const PlaneLayout& layout = layer.layout;
  const int column = layer.step == 1 ? x : x % 2 * layout.odd_start + x / 2;
  const auto row = static_cast<std::size_t>(y);
  return row * static_cast<std::size_t>(layout.pitch) + static_cast<std::size_t>(column);
}

void expect_layer_of(const cv::Mat& picture, const PyramidLayer& layer) {
  cv::Mat shrunken;
  cv::resize(picture, shrunken, layer.size, 0, 0, cv::INTER_LINEAR_EXACT);
  cv::Mat sums;
  cv::Mat square_sums;
  cv::integral(shrunken, sums, square_sums, CV_32S, CV_64F);
  int wrong = 0;
  for (int y = 0; y < sums.rows; ++y) {
    for (int x = 0; x < sums.cols; ++x) {
      const std::size_t at = place(layer, x, y);
      const auto squares =
          static_cast<std::uint32_t>(static_cast<std::uint64_t>(square_sums.at<double>(y, x)));
      wrong += layer.sums[at] != sums.at<int>(y, x);
      wrong += layer.low_sums[at] != static_cast<std::uint16_t>(sums.at<int>(y, x));
      wrong += static_cast<std::uint32_t>(layer.square_sums[at]) != squares;
    }
  }
  EXPECT_EQ(wrong, 0) << picture.size() << " at " << layer.scale;
}

TEST(ImagePyramid, SumsUpThePictureAtEveryScale) {
  cv::RNG random(1);
  ImagePyramid pyramid;
  for (const cv::Size size : {cv::Size(300, 170), cv::Size(301, 33), cv::Size(24, 24),
                              cv::Size(700, 400), cv::Size(5, 4)}) {
    const cv::Mat picture = noise(size, 0, 255, random);
    pyramid.set_picture(picture);
    const std::vector<float> scales = {1.0F, 1.1F, 1.7F, 2.0F, 2.3F, 4.1F};
    const std::vector<const PyramidLayer*> layers = pyramid.layers(scales);
    ASSERT_EQ(layers.size(), scales.size());
    for (std::size_t i = 0; i < scales.size(); ++i) {
      EXPECT_EQ(layers[i]->scale, scales[i]);
      EXPECT_EQ(layers[i]->step, scales[i] >= 2.0F ? 1 : 2);
      expect_layer_of(picture, *layers[i]);
    }
  }
}

// In a bright picture of this size, sums of squares need more than 32 bits.
TEST(ImagePyramid, LetsSumsOfSquaresWrapAround) {
  const cv::Mat picture(300, 400, CV_8U, cv::Scalar(250));
  ImagePyramid pyramid;
  pyramid.set_picture(picture);
  expect_layer_of(picture, *pyramid.layers({1.0F})[0]);
}

TEST(ImagePyramid, MakesEachLayerOfAPictureOnce) {
  cv::RNG random(2);
  const cv::Mat picture = noise({120, 90}, 0, 255, random);
  ImagePyramid pyramid;
  pyramid.set_picture(picture);
  const std::vector<const PyramidLayer*> first = pyramid.layers({1.0F, 1.5F});
  const std::vector<const PyramidLayer*> second = pyramid.layers({1.5F, 3.0F, 1.0F});
  EXPECT_EQ(second[0], first[1]);
  EXPECT_EQ(second[2], first[0]);
  expect_layer_of(picture, *second[1]);
}

TEST(ImagePyramid, ForgetsThePictureBefore) {
  cv::RNG random(3);
  const cv::Mat before = noise({120, 90}, 0, 255, random);
  const cv::Mat after = noise({120, 90}, 0, 255, random);
  ImagePyramid pyramid;
  pyramid.set_picture(before);
  pyramid.layers({1.0F, 2.0F});
  pyramid.set_picture(after);
  for (const PyramidLayer* layer : pyramid.layers({2.0F, 1.0F})) {
    expect_layer_of(after, *layer);
  }
}

}  // namespace
}  // namespace halcyra::haar
