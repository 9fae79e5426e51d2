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

TEST(MakeFrame, HasNoDataWithoutPixels) {
  const StreamImage image{cv::Mat(), cv::Size(512, 424), 4, Frame::Float};
  const std::unique_ptr<Frame> frame = make_frame(image, nullptr);
  EXPECT_EQ(frame->data, nullptr);
  EXPECT_EQ(frame->width, 512U);
  EXPECT_EQ(frame->height, 424U);
  EXPECT_EQ(frame->bytes_per_pixel, 4U);
  EXPECT_EQ(frame->format, Frame::Float);
}

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
