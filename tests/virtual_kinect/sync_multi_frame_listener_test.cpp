#include <atomic>
#include <cstdint>
#include <memory>
#include <thread>

#include <gtest/gtest.h>
#include <libfreenect2/frame_listener_impl.h>

#include "tests/support/counted_frame.hpp"
#include "tests/virtual_kinect/take_set.hpp"

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;
using libfreenect2::FrameMap;
using libfreenect2::SyncMultiFrameListener;

class ListenerTest : public testing::Test {
 protected:
  void deliver(Frame::Type type, std::uint32_t number = 0) {
    ASSERT_TRUE(listener_->onNewFrame(type, new CountedFrame(alive_, number)));
  }

  void deliver_set(std::uint32_t number) {
    deliver(Frame::Color, number);
    deliver(Frame::Ir, number);
    deliver(Frame::Depth, number);
  }

  std::atomic<int> alive_ = 0;
  std::unique_ptr<SyncMultiFrameListener> listener_ =
      std::make_unique<SyncMultiFrameListener>(Frame::Color | Frame::Ir | Frame::Depth);
  FrameMap frames_;
};

TEST_F(ListenerTest, HasASetOnlyWhenEverySubscribedTypeIsThere) {
  EXPECT_FALSE(listener_->hasNewFrame());
  deliver(Frame::Depth);
  EXPECT_FALSE(listener_->hasNewFrame());
  deliver(Frame::Color);
  EXPECT_FALSE(listener_->hasNewFrame());
  deliver(Frame::Color);
  EXPECT_FALSE(listener_->hasNewFrame());
  deliver(Frame::Ir);
  EXPECT_TRUE(listener_->hasNewFrame());
}

TEST_F(ListenerTest, NeedsOnlyTheTypesSubscribedTo) {
  listener_ = std::make_unique<SyncMultiFrameListener>(Frame::Ir);
  deliver(Frame::Ir, 3);
  EXPECT_TRUE(listener_->hasNewFrame());
  listener_->waitForNewFrame(frames_);
  ASSERT_EQ(frames_.size(), 1U);
  EXPECT_EQ(frames_.at(Frame::Ir)->sequence, 3U);
  listener_->release(frames_);
}

TEST_F(ListenerTest, RefusesTypesNotSubscribedTo) {
  listener_ = std::make_unique<SyncMultiFrameListener>(Frame::Color | Frame::Depth);
  CountedFrame frame(alive_);
  EXPECT_FALSE(listener_->onNewFrame(Frame::Ir, &frame));
  deliver(Frame::Color);
  EXPECT_FALSE(listener_->hasNewFrame());
  deliver(Frame::Depth);
  EXPECT_TRUE(listener_->hasNewFrame());
  listener_->waitForNewFrame(frames_);
  EXPECT_EQ(frames_.count(Frame::Ir), 0U);
  listener_->release(frames_);
}

TEST_F(ListenerTest, HandsOutOneFrameOfEachType) {
  deliver(Frame::Color, 1);
  deliver(Frame::Ir, 2);
  deliver(Frame::Depth, 3);
  listener_->waitForNewFrame(frames_);
  ASSERT_EQ(frames_.size(), 3U);
  EXPECT_EQ(frames_.at(Frame::Color)->sequence, 1U);
  EXPECT_EQ(frames_.at(Frame::Ir)->sequence, 2U);
  EXPECT_EQ(frames_.at(Frame::Depth)->sequence, 3U);
  EXPECT_EQ(alive_, 3);
  listener_->release(frames_);
}

TEST_F(ListenerTest, ReplacesAFrameThatNobodyTook) {
  deliver(Frame::Color, 1);
  deliver(Frame::Color, 2);
  EXPECT_EQ(alive_, 1);
  deliver(Frame::Ir, 1);
  deliver(Frame::Depth, 1);
  deliver(Frame::Depth, 5);
  EXPECT_EQ(alive_, 3);
  listener_->waitForNewFrame(frames_);
  EXPECT_EQ(frames_.at(Frame::Color)->sequence, 2U);
  EXPECT_EQ(frames_.at(Frame::Ir)->sequence, 1U);
  EXPECT_EQ(frames_.at(Frame::Depth)->sequence, 5U);
  listener_->release(frames_);
}

TEST_F(ListenerTest, ReleaseDeletesTheFramesAndClearsTheMap) {
  deliver_set(0);
  listener_->waitForNewFrame(frames_);
  EXPECT_EQ(alive_, 3);
  listener_->release(frames_);
  EXPECT_EQ(alive_, 0);
  EXPECT_TRUE(frames_.empty());
}

TEST_F(ListenerTest, HandsOutNoOtherSetBeforeRelease) {
  deliver_set(0);
  listener_->waitForNewFrame(frames_);
  EXPECT_FALSE(listener_->hasNewFrame());
  deliver_set(1);
  EXPECT_FALSE(listener_->hasNewFrame());
  EXPECT_EQ(frames_.at(Frame::Color)->sequence, 0U);
  EXPECT_EQ(alive_, 6);
  listener_->release(frames_);
  EXPECT_TRUE(listener_->hasNewFrame());
  listener_->waitForNewFrame(frames_);
  EXPECT_EQ(frames_.at(Frame::Color)->sequence, 1U);
  listener_->release(frames_);
}

TEST_F(ListenerTest, KeepsReplacingWhileASetIsOnLoan) {
  deliver_set(0);
  listener_->waitForNewFrame(frames_);
  for (std::uint32_t number = 1; number < 5; ++number) {
    deliver_set(number);
    EXPECT_EQ(alive_, 6);
  }
  listener_->release(frames_);
  listener_->waitForNewFrame(frames_);
  EXPECT_EQ(frames_.at(Frame::Depth)->sequence, 4U);
  listener_->release(frames_);
}

TEST_F(ListenerTest, ATakenSetIsNotThereAnyMore) {
  deliver_set(0);
  listener_->waitForNewFrame(frames_);
  listener_->release(frames_);
  EXPECT_FALSE(listener_->hasNewFrame());
  deliver(Frame::Color, 1);
  deliver(Frame::Ir, 1);
  EXPECT_FALSE(listener_->hasNewFrame());
  deliver(Frame::Depth, 1);
  EXPECT_TRUE(listener_->hasNewFrame());
}

TEST_F(ListenerTest, DeletesTheFramesItStillHolds) {
  deliver(Frame::Color);
  deliver(Frame::Depth);
  EXPECT_EQ(alive_, 2);
  listener_.reset();
  EXPECT_EQ(alive_, 0);
}

TEST_F(ListenerTest, ReleasingNothingChangesNothing) {
  listener_->release(frames_);
  EXPECT_FALSE(listener_->hasNewFrame());
  deliver_set(0);
  EXPECT_TRUE(listener_->hasNewFrame());
}

TEST_F(ListenerTest, WaitingEndsWhenTheSetIsComplete) {
  std::thread driver([this] { deliver_set(9); });
  listener_->waitForNewFrame(frames_);
  driver.join();
  EXPECT_EQ(frames_.at(Frame::Depth)->sequence, 9U);
  listener_->release(frames_);
}

// A set may end with the frame before the last: one that is taken between the last colour and the
// last depth frame leaves that alone, and no set gets complete any more.
TEST_F(ListenerTest, FramesOfEachTypeComeInOrderFromAnotherThread) {
  constexpr std::uint32_t last = 2000;
  std::atomic<bool> is_over = false;
  std::thread driver([&] {
    for (std::uint32_t number = 1; number <= last; ++number) deliver_set(number);
    is_over = true;
  });
  std::uint32_t color = 0;
  std::uint32_t depth = 0;
  while (!is_over || listener_->hasNewFrame()) {
    if (!listener_->hasNewFrame()) {
      std::this_thread::yield();
      continue;
    }
    listener_->waitForNewFrame(frames_);
    EXPECT_GE(frames_.at(Frame::Color)->sequence, color);
    EXPECT_GT(frames_.at(Frame::Depth)->sequence, depth);
    color = frames_.at(Frame::Color)->sequence;
    depth = frames_.at(Frame::Depth)->sequence;
    listener_->release(frames_);
  }
  driver.join();
  EXPECT_EQ(color, last);
  EXPECT_GE(depth, last - 1);
  listener_.reset();
  EXPECT_EQ(alive_, 0);
}

}  // namespace
}  // namespace halcyra::virtual_kinect
