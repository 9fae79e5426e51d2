#include "record/set_copy.hpp"

#include <cstring>
#include <memory>

#include <gtest/gtest.h>

namespace halcyra::record {
namespace {

using libfreenect2::Frame;
using libfreenect2::FrameMap;

constexpr StreamChoice kAll = {true, true, true};

std::unique_ptr<Frame> color_frame(Frame::Format format, std::size_t bytes_per_pixel = 4) {
  auto frame = std::make_unique<Frame>(3, 2, bytes_per_pixel);
  std::memset(frame->data, 7, 6 * bytes_per_pixel);
  frame->format = format;
  frame->sequence = 11;
  frame->timestamp = 12;
  return frame;
}

std::unique_ptr<Frame> float_frame(float value) {
  auto frame = std::make_unique<Frame>(2, 2, sizeof(float));
  for (std::size_t i = 0; i < 4; ++i) {
    std::memcpy(frame->data + i * sizeof(float), &value, sizeof(float));
  }
  frame->format = Frame::Float;
  frame->sequence = 21;
  frame->timestamp = 22;
  return frame;
}

PixelLayout layout_of(Frame& frame, Frame::Type type, Stream stream) {
  RecordedSet copy;
  copy_set(FrameMap{{type, &frame}}, kAll, copy);
  return copy.frames[stream].layout;
}

PixelLayout color_layout(Frame& frame) { return layout_of(frame, Frame::Color, kColor); }
PixelLayout depth_layout(Frame& frame) { return layout_of(frame, Frame::Depth, kDepth); }

TEST(SetCopy, OutlivesTheFrames) {
  RecordedSet copy;
  {
    const auto color = color_frame(Frame::BGRX);
    const auto infrared = float_frame(2.5F);
    const auto depth = float_frame(3.5F);
    copy_set(
        FrameMap{
            {Frame::Color, color.get()}, {Frame::Ir, infrared.get()}, {Frame::Depth, depth.get()}},
        kAll, copy);
    std::memset(color->data, 0, 24);
  }
  EXPECT_EQ(copy.frames[kColor].layout, PixelLayout::kBgrx);
  EXPECT_EQ(copy.frames[kColor].pixels.size(), cv::Size(3, 2));
  EXPECT_EQ(copy.frames[kColor].pixels.at<cv::Vec4b>(1, 2), cv::Vec4b(7, 7, 7, 7));
  EXPECT_EQ(copy.frames[kColor].sequence, 11U);
  EXPECT_EQ(copy.frames[kColor].timestamp, 12U);
  EXPECT_EQ(copy.frames[kInfrared].pixels.at<float>(1, 1), 2.5F);
  EXPECT_EQ(copy.frames[kDepth].layout, PixelLayout::kFloat);
  EXPECT_EQ(copy.frames[kDepth].pixels.at<float>(1, 1), 3.5F);
  EXPECT_EQ(copy.frames[kDepth].sequence, 21U);
}

TEST(SetCopy, KnowsTheChannelsOfColors) {
  EXPECT_EQ(color_layout(*color_frame(Frame::BGRX)), PixelLayout::kBgrx);
  EXPECT_EQ(color_layout(*color_frame(Frame::RGBX)), PixelLayout::kRgbx);
  EXPECT_EQ(color_layout(*color_frame(Frame::Gray, 1)), PixelLayout::kGrey);
  EXPECT_EQ(color_layout(*color_frame(Frame::BGRX, 1)), PixelLayout::kNone);
  EXPECT_EQ(color_layout(*color_frame(Frame::BGRX, 2)), PixelLayout::kNone);
}

TEST(SetCopy, LeavesOutFramesThatAreNoPictures) {
  unsigned char byte = 0;
  Frame without_data(3, 2, 4, &byte);
  without_data.data = nullptr;
  EXPECT_EQ(color_layout(without_data), PixelLayout::kNone);
  for (const auto& [width, height] : {std::pair<std::size_t, std::size_t>{0, 2},
                                      {3, 0},
                                      {65'501, 1},
                                      {1, 65'501},
                                      {60'000, 60'000},
                                      {std::size_t{1} << 40U, std::size_t{1} << 40U}}) {
    Frame frame(width, height, 4, &byte);
    EXPECT_EQ(color_layout(frame), PixelLayout::kNone) << width << "x" << height;
    EXPECT_EQ(depth_layout(frame), PixelLayout::kNone) << width << "x" << height;
  }
  const auto depth = float_frame(1.0F);
  depth->bytes_per_pixel = 2;
  EXPECT_EQ(depth_layout(*depth), PixelLayout::kNone);
}

TEST(SetCopy, ForgetsTheFrameOfAnEarlierSet) {
  RecordedSet copy;
  const auto depth = float_frame(1.0F);
  copy_set(FrameMap{{Frame::Depth, depth.get()}}, kAll, copy);
  copy_set(FrameMap{{Frame::Depth, nullptr}}, kAll, copy);
  EXPECT_EQ(copy.frames[kDepth].layout, PixelLayout::kNone);
  EXPECT_EQ(copy.frames[kDepth].sequence, 0U);
}

TEST(SetCopy, UsesItsMemoryAgain) {
  RecordedSet copy;
  const auto first = float_frame(1.0F);
  copy_set(FrameMap{{Frame::Depth, first.get()}}, kAll, copy);
  const unsigned char* const memory = copy.frames[kDepth].pixels.data;
  const auto second = float_frame(2.0F);
  copy_set(FrameMap{{Frame::Depth, second.get()}}, kAll, copy);
  EXPECT_EQ(copy.frames[kDepth].pixels.data, memory);
  EXPECT_EQ(copy.frames[kDepth].pixels.at<float>(0, 0), 2.0F);
}

TEST(SetCopy, LeavesOutThePixelsOfOtherStreams) {
  RecordedSet copy;
  const auto color = color_frame(Frame::RGBX);
  copy_set(FrameMap{{Frame::Color, color.get()}}, {false, true, true}, copy);
  EXPECT_TRUE(copy.frames[kColor].pixels.empty());
  EXPECT_EQ(copy.frames[kColor].sequence, 11U);
}

}  // namespace
}  // namespace halcyra::record
