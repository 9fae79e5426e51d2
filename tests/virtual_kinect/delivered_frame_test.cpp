#include "virtual_kinect/delivered_frame.hpp"

#include <cstdint>
#include <memory>

#include <gtest/gtest.h>

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;

TEST(MakeFrame, CopiesThePixels) {
  StreamImage image{cv::Mat(2, 3, CV_8UC4), cv::Size(3, 2), 4, Frame::RGBX};
  for (int i = 0; i < 24; ++i) image.pixels.data[i] = static_cast<unsigned char>(i);
  const std::unique_ptr<Frame> frame = make_frame(image, nullptr);
  EXPECT_EQ(frame->width, 3U);
  EXPECT_EQ(frame->height, 2U);
  EXPECT_EQ(frame->bytes_per_pixel, 4U);
  EXPECT_EQ(frame->format, Frame::RGBX);
  ASSERT_NE(frame->data, nullptr);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(frame->data) % 64, 0U);
  for (int i = 0; i < 24; ++i) EXPECT_EQ(frame->data[i], i);
  frame->data[5] = 99;
  EXPECT_EQ(image.pixels.data[5], 5);
}

TEST(MakeFrame, KeepsPixelsThatAreGivenAway) {
  StreamImage image{cv::Mat(2, 3, CV_8UC4, cv::Scalar::all(7)), cv::Size(3, 2), 4, Frame::BGRX,
                    true};
  const unsigned char* const pixels = image.pixels.data;
  const std::unique_ptr<Frame> frame = make_frame(image, nullptr);
  image.pixels.release();
  EXPECT_EQ(frame->data, pixels);
  EXPECT_EQ(frame->data[23], 7);
}

TEST(MakeFrame, CopiesPixelsThatAreNotAligned) {
  const cv::Mat wide(2, 32, CV_8UC1, cv::Scalar(7));
  const cv::Mat row = wide.row(1).colRange(1, 17);
  const StreamImage image{row, row.size(), 1, Frame::Gray, true};
  const std::unique_ptr<Frame> frame = make_frame(image, nullptr);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(frame->data) % 64, 0U);
  EXPECT_EQ(frame->data[15], 7);
}

class MakeFrameWithoutPixels : public testing::TestWithParam<bool> {};

TEST_P(MakeFrameWithoutPixels, HasNoData) {
  const StreamImage image{cv::Mat(), cv::Size(512, 424), 4, Frame::Float, GetParam()};
  const std::unique_ptr<Frame> frame = make_frame(image, nullptr);
  EXPECT_EQ(frame->data, nullptr);
  EXPECT_EQ(frame->width, 512U);
  EXPECT_EQ(frame->height, 424U);
  EXPECT_EQ(frame->bytes_per_pixel, 4U);
  EXPECT_EQ(frame->format, Frame::Float);
}

INSTANTIATE_TEST_SUITE_P(LentAndGivenAway, MakeFrameWithoutPixels, testing::Bool());

TEST(MakeFrame, HoldsWhatItWasGivenForAsLongAsItLives) {
  auto hold = std::make_shared<int>(0);
  const StreamImage image{cv::Mat(1, 1, CV_8UC1, cv::Scalar(0)), cv::Size(1, 1), 1, Frame::Gray};
  std::unique_ptr<Frame> frame = make_frame(image, hold);
  EXPECT_EQ(hold.use_count(), 2);
  frame.reset();
  EXPECT_EQ(hold.use_count(), 1);
}

}  // namespace
}  // namespace halcyra::virtual_kinect
