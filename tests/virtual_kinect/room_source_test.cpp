#include "virtual_kinect/room_source.hpp"

#include <cstdint>
#include <thread>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;

constexpr std::uint64_t kOwnerAlone = 3 * 30;
constexpr std::uint64_t kLightFading = 34 * 30;
constexpr std::uint64_t kFocusHunting = 40 * 30;
constexpr std::uint64_t kThreePeople = 49 * 30;
constexpr std::uint64_t kEmptyRoom = 56 * 30;
constexpr std::uint64_t kDifferentSets[] = {kOwnerAlone, kLightFading, kFocusHunting, kThreePeople,
                                            kEmptyRoom};

cv::Mat pixels(const FrameSource& source, Frame::Type stream, std::uint64_t set) {
  return source.image(stream, set).pixels;
}

bool same(const cv::Mat& a, const cv::Mat& b) {
  return a.size() == b.size() && a.type() == b.type() &&
         cv::norm(a.reshape(1), b.reshape(1), cv::NORM_INF) == 0.0;
}

// Making a room takes a while, so the tests share one.
class RoomSourceTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { source_ = new FrameSource(open_room()); }
  static void TearDownTestSuite() { delete source_; }

  static FrameSource* source_;
};

FrameSource* RoomSourceTest::source_ = nullptr;

TEST_F(RoomSourceTest, DeliversAllStreamsWithoutEnd) {
  EXPECT_EQ(source_->streams.size(), 3U);
  EXPECT_FALSE(source_->set_count);
}

TEST_F(RoomSourceTest, HasTheSensorsSizesAndFormats) {
  const StreamImage color = source_->image(Frame::Color, 3);
  EXPECT_EQ(color.size, cv::Size(1920, 1080));
  EXPECT_EQ(color.pixels.type(), CV_8UC4);
  EXPECT_EQ(color.format, Frame::BGRX);
  for (const Frame::Type stream : {Frame::Ir, Frame::Depth}) {
    const StreamImage image = source_->image(stream, 3);
    EXPECT_EQ(image.size, cv::Size(512, 424));
    EXPECT_EQ(image.pixels.type(), CV_32FC1);
    EXPECT_EQ(image.format, Frame::Float);
  }
}

TEST_F(RoomSourceTest, GivesASetTheSamePixelsWhateverWasAskedBefore) {
  const FrameSource again = open_room();
  for (const std::uint64_t set : kDifferentSets) {
    for (const Frame::Type stream : {Frame::Depth, Frame::Color, Frame::Ir}) {
      const cv::Mat first = pixels(*source_, stream, set).clone();
      static_cast<void>(pixels(again, stream, set + 17));
      EXPECT_TRUE(same(first, pixels(again, stream, set))) << "set " << set << " of " << stream;
    }
  }
}

TEST_F(RoomSourceTest, GivesItsPixelsAway) {
  for (const Frame::Type stream : {Frame::Color, Frame::Ir, Frame::Depth}) {
    StreamImage image = source_->image(stream, kOwnerAlone);
    EXPECT_TRUE(image.is_given_away);
    const cv::Mat before = image.pixels.clone();
    image.pixels.setTo(0);
    EXPECT_TRUE(same(before, pixels(*source_, stream, kOwnerAlone))) << stream;
  }
}

// A device that is opened twice asks from two threads, one after the other.
TEST_F(RoomSourceTest, GivesASetTheSamePixelsOnEveryThread) {
  for (const std::uint64_t set : kDifferentSets) {
    for (const Frame::Type stream : {Frame::Color, Frame::Ir, Frame::Depth}) {
      const cv::Mat here = pixels(*source_, stream, set).clone();
      cv::Mat there;
      std::thread([&] { there = pixels(*source_, stream, set).clone(); }).join();
      EXPECT_TRUE(same(here, there)) << "set " << set << " of " << stream;
    }
  }
}

TEST_F(RoomSourceTest, StartsAgainAfterAMinuteWithOtherNoise) {
  const cv::Mat first = pixels(*source_, Frame::Color, kOwnerAlone).clone();
  const cv::Mat later = pixels(*source_, Frame::Color, kOwnerAlone + 60 * 30);
  EXPECT_FALSE(same(first, later));
  EXPECT_LT(cv::norm(first, later, cv::NORM_L1) / static_cast<double>(4 * first.total()), 2.0);
}

TEST_F(RoomSourceTest, DependsOnItsSeed) {
  const FrameSource other = open_room(7);
  EXPECT_FALSE(same(pixels(*source_, Frame::Color, 0), pixels(other, Frame::Color, 0)));
}

TEST_F(RoomSourceTest, MeasuresDepthWithinTheSensorsRange) {
  const cv::Mat depth = pixels(*source_, Frame::Depth, kOwnerAlone);
  const cv::Mat out_of_range = (depth != 0) & ((depth < 500) | (depth > 4500));
  EXPECT_EQ(cv::countNonZero(out_of_range), 0);
  EXPECT_GT(cv::countNonZero(depth), static_cast<int>(depth.total() / 2));
}

TEST_F(RoomSourceTest, LeavesTheOutermostColumnsDark) {
  for (const Frame::Type stream : {Frame::Ir, Frame::Depth}) {
    const cv::Mat image = pixels(*source_, stream, kOwnerAlone);
    EXPECT_EQ(cv::countNonZero(image.col(0)), 0);
    EXPECT_EQ(cv::countNonZero(image.col(image.cols - 1)), 0);
  }
}

TEST_F(RoomSourceTest, ShowsAPersonNearerAndBrighterInInfraredThanTheRoomBehind) {
  const cv::Mat nearer = (pixels(*source_, Frame::Depth, kOwnerAlone) + 500 <
                          pixels(*source_, Frame::Depth, kEmptyRoom)) &
                         (pixels(*source_, Frame::Depth, kOwnerAlone) > 0);
  EXPECT_GT(cv::countNonZero(nearer), 5000);
  EXPECT_GT(cv::mean(pixels(*source_, Frame::Ir, kOwnerAlone), nearer)[0],
            cv::mean(pixels(*source_, Frame::Ir, kEmptyRoom), nearer)[0]);
}

}  // namespace
}  // namespace halcyra::virtual_kinect
