#include "virtual_kinect/virtual_device.hpp"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <libfreenect2/frame_listener_impl.h>

#include "tests/virtual_kinect/take_set.hpp"

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;
using libfreenect2::FrameMap;
using libfreenect2::SyncMultiFrameListener;

FrameSource all_streams() {
  FrameSource source;
  source.streams = {Frame::Color, Frame::Ir, Frame::Depth};
  source.image = [](Frame::Type, std::uint64_t) {
    return StreamImage{cv::Mat(1, 1, CV_32FC1, cv::Scalar(0)), cv::Size(1, 1), 4, Frame::Float};
  };
  return source;
}

class VirtualDeviceTest : public testing::Test {
 protected:
  VirtualDeviceTest() {
    settings_.serial = "0815";
    settings_.firmware = "4.3";
    settings_.pace = 0;
  }

  std::unique_ptr<VirtualDevice> make_device() {
    auto device = std::make_unique<VirtualDevice>(
        settings_, [this] { return source_; },
        [this](VirtualDevice* gone) { forgotten_.push_back(gone); });
    device->setColorFrameListener(&listener_);
    device->setIrAndDepthFrameListener(&listener_);
    return device;
  }

  // Takes and releases the next set, and returns its sequence number.
  std::uint32_t next_set() {
    EXPECT_TRUE(take_set(listener_, frames_));
    const std::uint32_t sequence = frames_.begin()->second->sequence;
    listener_.release(frames_);
    return sequence;
  }

  DeviceSettings settings_;
  FrameSource source_ = all_streams();
  SyncMultiFrameListener listener_{Frame::Color | Frame::Ir | Frame::Depth};
  FrameMap frames_;
  std::vector<VirtualDevice*> forgotten_;
};

TEST_F(VirtualDeviceTest, KnowsItsSerialNumberAtOnce) {
  EXPECT_EQ(make_device()->getSerialNumber(), "0815");
}

TEST_F(VirtualDeviceTest, KnowsItsFirmwareOnceStarted) {
  const auto device = make_device();
  EXPECT_EQ(device->getFirmwareVersion(), "<unknown>");
  ASSERT_TRUE(device->start());
  EXPECT_EQ(device->getFirmwareVersion(), "4.3");
  device->stop();
  EXPECT_EQ(device->getFirmwareVersion(), "4.3");
}

TEST_F(VirtualDeviceTest, MayFailToStart) {
  settings_.starts = false;
  const auto device = make_device();
  EXPECT_FALSE(device->start());
  EXPECT_FALSE(device->startStreams(true, false));
  EXPECT_EQ(device->getFirmwareVersion(), "<unknown>");
  EXPECT_FALSE(device->stop());
  EXPECT_TRUE(device->close());
}

TEST_F(VirtualDeviceTest, DeliversEveryStream) {
  const auto device = make_device();
  ASSERT_TRUE(device->start());
  EXPECT_EQ(next_set(), 0U);
  EXPECT_EQ(next_set(), 1U);
  EXPECT_TRUE(device->stop());
}

TEST_F(VirtualDeviceTest, DeliversOnlyTheStreamsThatWereStarted) {
  SyncMultiFrameListener color(Frame::Color);
  SyncMultiFrameListener depth(Frame::Depth);
  SyncMultiFrameListener ir(Frame::Ir);
  const auto device = make_device();
  device->setColorFrameListener(&color);
  device->setIrAndDepthFrameListener(&depth);
  ASSERT_TRUE(device->startStreams(true, false));
  for (int set = 0; set < 3; ++set) {
    ASSERT_TRUE(take_set(color, frames_));
    color.release(frames_);
  }
  device->stop();
  EXPECT_FALSE(depth.hasNewFrame());

  device->setIrAndDepthFrameListener(&ir);
  FrameMap leftover;
  if (color.hasNewFrame()) {
    color.waitForNewFrame(leftover);
    color.release(leftover);
  }
  ASSERT_TRUE(device->startStreams(false, true));
  for (int set = 0; set < 3; ++set) {
    ASSERT_TRUE(take_set(ir, frames_));
    ir.release(frames_);
  }
  device->stop();
  EXPECT_FALSE(color.hasNewFrame());
}

TEST_F(VirtualDeviceTest, MayStartNoStreamAtAll) {
  const auto device = make_device();
  EXPECT_TRUE(device->startStreams(false, false));
  EXPECT_TRUE(device->stop());
  EXPECT_FALSE(listener_.hasNewFrame());
}

TEST_F(VirtualDeviceTest, RunsWithoutListeners) {
  for (const int pace : {0, 120}) {
    settings_.pace = pace;
    const auto device = make_device();
    device->setColorFrameListener(nullptr);
    device->setIrAndDepthFrameListener(nullptr);
    EXPECT_TRUE(device->start());
    EXPECT_TRUE(device->stop());
  }
}

TEST_F(VirtualDeviceTest, ListenersMayComeLate) {
  const auto device = make_device();
  device->setColorFrameListener(nullptr);
  device->setIrAndDepthFrameListener(nullptr);
  SyncMultiFrameListener color(Frame::Color);
  ASSERT_TRUE(device->start());
  device->setColorFrameListener(&color);
  ASSERT_TRUE(take_set(color, frames_));
  EXPECT_EQ(frames_.at(Frame::Color)->sequence, 0U);
  color.release(frames_);
  device->close();
}

TEST_F(VirtualDeviceTest, StartsAgainAfterStop) {
  for (const int pace : {0, 120}) {
    settings_.pace = pace;
    const auto device = make_device();
    for (int run = 0; run < 3; ++run) {
      ASSERT_TRUE(device->start());
      next_set();
      EXPECT_TRUE(device->stop());
    }
  }
}

TEST_F(VirtualDeviceTest, CountsSetsFromZeroAfterEachStart) {
  const auto device = make_device();
  for (int run = 0; run < 3; ++run) {
    SyncMultiFrameListener listener(Frame::Color);
    device->setColorFrameListener(&listener);
    ASSERT_TRUE(device->startStreams(true, false));
    for (std::uint32_t set = 0; set < 3; ++set) {
      ASSERT_TRUE(take_set(listener, frames_));
      EXPECT_EQ(frames_.at(Frame::Color)->sequence, set);
      listener.release(frames_);
    }
    ASSERT_TRUE(device->stop());
  }
}

TEST_F(VirtualDeviceTest, StopsWhileASetIsHeldAndStartsAgain) {
  const auto device = make_device();
  ASSERT_TRUE(device->start());
  ASSERT_TRUE(take_set(listener_, frames_));
  EXPECT_TRUE(device->stop());
  ASSERT_TRUE(device->start());
  listener_.release(frames_);
  EXPECT_EQ(next_set(), 0U);
  EXPECT_EQ(next_set(), 1U);
  EXPECT_TRUE(device->close());
}

TEST_F(VirtualDeviceTest, NothingIsDeliveredAfterStop) {
  settings_.pace = 120;
  const auto device = make_device();
  ASSERT_TRUE(device->start());
  next_set();
  device->stop();
  SyncMultiFrameListener listener(Frame::Color | Frame::Ir | Frame::Depth);
  device->setColorFrameListener(&listener);
  device->setIrAndDepthFrameListener(&listener);
  EXPECT_FALSE(listener.hasNewFrame());
}

TEST_F(VirtualDeviceTest, StartsOnlyWhereItMakesSense) {
  const auto device = make_device();
  EXPECT_FALSE(device->stop());
  ASSERT_TRUE(device->start());
  EXPECT_FALSE(device->start());
  EXPECT_EQ(next_set(), 0U);
  EXPECT_TRUE(device->stop());
  EXPECT_FALSE(device->stop());
  EXPECT_TRUE(device->close());
  EXPECT_FALSE(device->start());
  EXPECT_TRUE(device->close());
}

TEST_F(VirtualDeviceTest, CloseStopsTheStreams) {
  settings_.pace = 120;
  const auto device = make_device();
  EXPECT_TRUE(device->is_open());
  ASSERT_TRUE(device->start());
  EXPECT_TRUE(device->close());
  EXPECT_FALSE(device->is_open());
  EXPECT_FALSE(device->stop());
}

TEST_F(VirtualDeviceTest, MayFailToStopAndToClose) {
  settings_.stop = StopOutcome::kFail;
  settings_.closes = false;
  const auto device = make_device();
  ASSERT_TRUE(device->start());
  next_set();
  EXPECT_FALSE(device->stop());
  EXPECT_FALSE(device->close());
  EXPECT_FALSE(device->is_open());
}

TEST_F(VirtualDeviceTest, LateSetArrivesWhileItStops) {
  settings_.stop = StopOutcome::kLate;
  const auto device = make_device();
  ASSERT_TRUE(device->start());
  ASSERT_TRUE(take_set(listener_, frames_));
  EXPECT_TRUE(device->stop());
  listener_.release(frames_);
  EXPECT_TRUE(listener_.hasNewFrame());
  EXPECT_TRUE(device->close());
}

TEST_F(VirtualDeviceTest, CannotBeStoppedOnceItIsUnplugged) {
  settings_.after = AfterLastSet::kUnplug;
  source_.set_count = 2;
  const auto device = make_device();
  ASSERT_TRUE(device->start());
  next_set();
  next_set();
  const auto limit = std::chrono::steady_clock::now() + std::chrono::milliseconds(200);
  while (std::chrono::steady_clock::now() < limit) std::this_thread::yield();
  EXPECT_FALSE(listener_.hasNewFrame());
  EXPECT_FALSE(device->stop());
  EXPECT_TRUE(device->close());
}

TEST_F(VirtualDeviceTest, CanBeStoppedWhileItIsPluggedIn) {
  settings_.after = AfterLastSet::kUnplug;
  const auto device = make_device();
  ASSERT_TRUE(device->start());
  next_set();
  EXPECT_TRUE(device->stop());
}

TEST_F(VirtualDeviceTest, CountersMayRunOver) {
  settings_.counters_wrap = true;
  const auto device = make_device();
  ASSERT_TRUE(device->start());
  const std::uint32_t first = next_set();
  EXPECT_GT(first, 0U - 100U);
  std::uint32_t sets = 1;
  while (next_set() != 0 && sets < 100) ++sets;
  EXPECT_EQ(sets, 0U - first);
}

TEST_F(VirtualDeviceTest, IsForgottenWhenDestroyed) {
  auto device = make_device();
  VirtualDevice* const address = device.get();
  ASSERT_TRUE(device->start());
  device.reset();
  EXPECT_EQ(forgotten_, std::vector<VirtualDevice*>({address}));
}

}  // namespace
}  // namespace halcyra::virtual_kinect
