#include "virtual_kinect/frame_faults.hpp"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;

int chosen(bool (*is_chosen)(Frame::Type, std::uint64_t, int), Frame::Type stream, int percent) {
  int count = 0;
  for (std::uint64_t set = 0; set < 10000; ++set) count += is_chosen(stream, set, percent) ? 1 : 0;
  return count;
}

TEST(FrameFaults, HitTheShareThatIsAskedFor) {
  for (const auto is_chosen : {is_lost, is_damaged}) {
    for (const Frame::Type stream : {Frame::Color, Frame::Ir, Frame::Depth}) {
      EXPECT_EQ(chosen(is_chosen, stream, 0), 0);
      EXPECT_NEAR(chosen(is_chosen, stream, 1), 100, 40);
      EXPECT_NEAR(chosen(is_chosen, stream, 30), 3000, 200);
      EXPECT_EQ(chosen(is_chosen, stream, 100), 10000);
    }
  }
}

// With one choice for all, whole sets would get lost at once, and no damaged frame would ever
// arrive.
TEST(FrameFaults, HitStreamsIndependentlyAndSoDoKindsOfFault) {
  int both_streams = 0;
  int both_faults = 0;
  for (std::uint64_t set = 0; set < 10000; ++set) {
    both_streams += is_lost(Frame::Ir, set, 50) && is_lost(Frame::Depth, set, 50) ? 1 : 0;
    both_faults += is_lost(Frame::Ir, set, 50) && is_damaged(Frame::Ir, set, 50) ? 1 : 0;
  }
  EXPECT_NEAR(both_streams, 2500, 200);
  EXPECT_NEAR(both_faults, 2500, 200);
}

TEST(FrameFaults, DamageTakesTurns) {
  constexpr std::size_t kWidth = 6;
  constexpr std::size_t kHeight = 4;
  for (std::uint64_t set = 0; set < 10; ++set) {
    SCOPED_TRACE(set);
    Frame frame(kWidth, kHeight, 4);
    std::fill_n(frame.data, kWidth * kHeight * 4, static_cast<unsigned char>(7));
    damage(frame, set);
    EXPECT_EQ(frame.status, 1U);
    EXPECT_EQ(frame.data == nullptr, set % 5 == 0);
    EXPECT_EQ(frame.width, set % 5 == 1 ? 0 : kWidth);
    EXPECT_EQ(frame.height, set % 5 == 2 ? 0 : kHeight);
    EXPECT_EQ(frame.bytes_per_pixel, set % 5 == 3 ? 2U : 4U);
  }
}

TEST(FrameFaults, TornPicturesKeepTheirUpperHalf) {
  constexpr std::size_t kBytes = std::size_t{8} * 5 * 4;
  constexpr std::size_t kUpperHalf = std::size_t{8} * 2 * 4;
  std::vector<unsigned char> pixels(kBytes, 7);
  Frame frame(8, 5, 4, pixels.data());
  damage(frame, 4);
  const auto is_seven = [](unsigned char byte) { return byte == 7; };
  EXPECT_TRUE(std::all_of(pixels.begin(), pixels.begin() + kUpperHalf, is_seven));
  EXPECT_LT(std::count_if(pixels.begin() + kUpperHalf, pixels.end(), is_seven), 10);
}

TEST(FrameFaults, FrameWithoutDataCanBeTorn) {
  Frame frame(8, 5, 4);
  frame.data = nullptr;
  damage(frame, 4);
  EXPECT_EQ(frame.data, nullptr);
  EXPECT_EQ(frame.status, 1U);
}

}  // namespace
}  // namespace halcyra::virtual_kinect
