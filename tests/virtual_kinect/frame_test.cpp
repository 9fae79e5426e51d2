#include <array>
#include <cstdint>
#include <numeric>
#include <type_traits>

#include <gtest/gtest.h>
#include <libfreenect2/frame_listener.hpp>

namespace libfreenect2 {
namespace {

TEST(Frame, HasTheValuesOfTheInterface) {
  EXPECT_EQ(Frame::Color, 1);
  EXPECT_EQ(Frame::Ir, 2);
  EXPECT_EQ(Frame::Depth, 4);
  EXPECT_EQ(Frame::Invalid, 0);
  EXPECT_EQ(Frame::Raw, 1);
  EXPECT_EQ(Frame::Float, 2);
  EXPECT_EQ(Frame::BGRX, 4);
  EXPECT_EQ(Frame::RGBX, 5);
  EXPECT_EQ(Frame::Gray, 6);
}

TEST(Frame, HasTheFieldTypesOfTheInterface) {
  EXPECT_TRUE((std::is_same_v<decltype(Frame::width), size_t>));
  EXPECT_TRUE((std::is_same_v<decltype(Frame::height), size_t>));
  EXPECT_TRUE((std::is_same_v<decltype(Frame::bytes_per_pixel), size_t>));
  EXPECT_TRUE((std::is_same_v<decltype(Frame::data), unsigned char*>));
  EXPECT_TRUE((std::is_same_v<decltype(Frame::timestamp), uint32_t>));
  EXPECT_TRUE((std::is_same_v<decltype(Frame::sequence), uint32_t>));
  EXPECT_TRUE((std::is_same_v<decltype(Frame::exposure), float>));
  EXPECT_TRUE((std::is_same_v<decltype(Frame::gain), float>));
  EXPECT_TRUE((std::is_same_v<decltype(Frame::gamma), float>));
  EXPECT_TRUE((std::is_same_v<decltype(Frame::status), uint32_t>));
  EXPECT_TRUE((std::is_same_v<decltype(Frame::format), Frame::Format>));
}

TEST(Frame, StartsWithItsSizeAndZeros) {
  const Frame frame(7, 5, 4);
  EXPECT_EQ(frame.width, 7U);
  EXPECT_EQ(frame.height, 5U);
  EXPECT_EQ(frame.bytes_per_pixel, 4U);
  EXPECT_EQ(frame.timestamp, 0U);
  EXPECT_EQ(frame.sequence, 0U);
  EXPECT_EQ(frame.exposure, 0.0F);
  EXPECT_EQ(frame.gain, 0.0F);
  EXPECT_EQ(frame.gamma, 0.0F);
  EXPECT_EQ(frame.status, 0U);
  EXPECT_EQ(frame.format, Frame::Invalid);
}

TEST(Frame, AllocatesAlignedPixels) {
  for (const size_t width : {1U, 3U, 512U}) {
    const Frame frame(width, 3, 1);
    ASSERT_NE(frame.data, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(frame.data) % 64, 0U);
    std::iota(frame.data, frame.data + width * 3, static_cast<unsigned char>(0));
    EXPECT_EQ(frame.data[width * 3 - 1], static_cast<unsigned char>(width * 3 - 1));
  }
}

TEST(Frame, LeavesGivenPixelsToTheirOwner) {
  std::array<unsigned char, 6> pixels = {1, 2, 3, 4, 5, 6};
  {
    const Frame frame(3, 2, 1, pixels.data());
    EXPECT_EQ(frame.data, pixels.data());
  }
  EXPECT_EQ(pixels[5], 6);
}

TEST(Frame, IsDestroyedThroughItsBase) {
  EXPECT_TRUE(std::has_virtual_destructor_v<Frame>);
  EXPECT_TRUE(std::has_virtual_destructor_v<FrameListener>);
}

}  // namespace
}  // namespace libfreenect2
