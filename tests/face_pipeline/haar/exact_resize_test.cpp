#include "face_pipeline/haar/exact_resize.hpp"

#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "tests/face_pipeline/haar/sample_pictures.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra::haar {
namespace {

cv::Mat resized_line(const cv::Mat& line, int scaled) {
  cv::Mat resized;
  cv::resize(line, resized, cv::Size(scaled, 1), 0, 0, cv::INTER_LINEAR_EXACT);
  return resized;
}

cv::Mat read_at(const cv::Mat& line, const std::vector<int>& positions) {
  cv::Mat read(1, static_cast<int>(positions.size()), CV_8U);
  for (int i = 0; i < read.cols; ++i) {
    const int position = positions[static_cast<std::size_t>(i)];
    const int left = line.at<uchar>(position / 256);
    const int right = line.at<uchar>(std::min(position / 256 + 1, line.cols - 1));
    const int weight = position % 256;
    read.at<uchar>(i) = static_cast<uchar>((left * (256 - weight) + right * weight + 128) / 256);
  }
  return read;
}

TEST(ResizePositions, AreWhereOpenCvReads) {
  cv::RNG random(1);
  for (int round = 0; round < 2000; ++round) {
    const int source = random.uniform(1, 1000);
    const int scaled = random.uniform(1, source + 1);
    if (scaled == source) continue;
    const cv::Mat line = noise({source, 1}, 0, 255, random);
    EXPECT_TRUE(
        same_pixels(read_at(line, resize_positions(source, scaled)), resized_line(line, scaled)))
        << source << " to " << scaled;
  }
}

TEST(ResizeMirrorsExactly, IsRightWhereItSaysSo) {
  cv::RNG random(2);
  int exact = 0;
  for (int round = 0; round < 2000; ++round) {
    const int source = random.uniform(1, 600);
    const int scaled = random.uniform(1, source + 1);
    if (!resize_mirrors_exactly(source, scaled)) continue;
    ++exact;
    const cv::Mat line = noise({source, 1}, 0, 255, random);
    EXPECT_TRUE(same_pixels(resized_line(mirror_image(line), scaled),
                            mirror_image(resized_line(line, scaled))))
        << source << " to " << scaled;
  }
  EXPECT_GT(exact, 1000);
}

// From 391 to 256, the fraction of some pixel comes out just above the middle of two steps of
// 1/256, and that of its mirror image just below.
TEST(ResizeMirrorsExactly, SaysNoWhereTheRoundingIsLopsided) {
  EXPECT_TRUE(resize_mirrors_exactly(960, 960));
  EXPECT_TRUE(resize_mirrors_exactly(960, 480));
  EXPECT_TRUE(resize_mirrors_exactly(960, 873));
  EXPECT_FALSE(resize_mirrors_exactly(391, 256));
  cv::RNG random(3);
  int differences = 0;
  for (int round = 0; round < 200; ++round) {
    const cv::Mat line = noise({391, 1}, 0, 255, random);
    differences +=
        !same_pixels(resized_line(mirror_image(line), 256), mirror_image(resized_line(line, 256)));
  }
  EXPECT_GT(differences, 0);
}

}  // namespace
}  // namespace halcyra::haar
