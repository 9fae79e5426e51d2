// The timeout of SyncMultiFrameListener::waitForNewFrame, which each build treats in its own way.
#include <atomic>
#include <chrono>
#include <future>
#include <thread>

#include <gtest/gtest.h>
#include <libfreenect2/config.h>
#include <libfreenect2/frame_listener_impl.h>
#include <libfreenect2/libfreenect2.hpp>

#include "tests/support/counted_frame.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/virtual_kinect/scene_variable.hpp"
#include "tests/virtual_kinect/take_set.hpp"
#include "tests/virtual_kinect/test_recording.hpp"

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;
using libfreenect2::FrameMap;
using libfreenect2::SyncMultiFrameListener;

#ifdef LIBFREENECT2_THREADING_STDLIB

TEST(WaitWithTimeout, EndsWithoutASet) {
  std::atomic<int> alive = 0;  // outlives the frames that the listener keeps
  SyncMultiFrameListener listener(Frame::Color | Frame::Depth);
  FrameMap frames;
  EXPECT_FALSE(listener.waitForNewFrame(frames, 1));
  EXPECT_FALSE(listener.waitForNewFrame(frames, 0));
  listener.onNewFrame(Frame::Color, new CountedFrame(alive));
  EXPECT_FALSE(listener.waitForNewFrame(frames, 1));
  EXPECT_TRUE(frames.empty());
}

TEST(WaitWithTimeout, LastsAsLongAsAskedFor) {
  SyncMultiFrameListener listener(Frame::Color);
  FrameMap frames;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(listener.waitForNewFrame(frames, 30));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(30));
}

TEST(WaitWithTimeout, HandsOutASetThatIsThere) {
  std::atomic<int> alive = 0;
  SyncMultiFrameListener listener(Frame::Color);
  FrameMap frames;
  listener.onNewFrame(Frame::Color, new CountedFrame(alive, 4));
  ASSERT_TRUE(listener.waitForNewFrame(frames, 0));
  EXPECT_EQ(frames.at(Frame::Color)->sequence, 4U);
  EXPECT_FALSE(listener.hasNewFrame());
  listener.onNewFrame(Frame::Color, new CountedFrame(alive, 5));
  FrameMap none;
  EXPECT_FALSE(listener.waitForNewFrame(none, 1));  // the first set is still on loan
  listener.release(frames);
}

TEST(WaitWithTimeout, EndsEarlyWithASet) {
  std::atomic<int> alive = 0;
  SyncMultiFrameListener listener(Frame::Color);
  FrameMap frames;
  std::thread driver([&] { listener.onNewFrame(Frame::Color, new CountedFrame(alive)); });
  EXPECT_TRUE(listener.waitForNewFrame(frames, 60'000));
  driver.join();
  listener.release(frames);
}

TEST(WaitWithTimeout, TimesOutOnAStalledSensor) {
  const TemporaryFolder folder;
  write_recording(folder.path(), 1);
  write_device_yml(folder.path(), "pace: 0\nafter: stall\n");
  const SceneVariable scene(folder.path().string());
  SyncMultiFrameListener listener(Frame::Color | Frame::Ir | Frame::Depth);
  libfreenect2::Freenect2 context;
  libfreenect2::Freenect2Device* device = context.openDefaultDevice();
  ASSERT_NE(device, nullptr);
  device->setColorFrameListener(&listener);
  device->setIrAndDepthFrameListener(&listener);
  ASSERT_TRUE(device->start());
  FrameMap frames;
  ASSERT_TRUE(take_set(listener, frames));
  listener.release(frames);
  EXPECT_FALSE(listener.waitForNewFrame(frames, 50));
  device->close();
}

#else

TEST(WaitIgnoringTimeout, BlocksUntilASetComes) {
  std::atomic<int> alive = 0;
  SyncMultiFrameListener listener(Frame::Color);
  FrameMap frames;
  std::promise<void> waiting;
  std::future<bool> result = std::async(std::launch::async, [&] {
    waiting.set_value();
    return listener.waitForNewFrame(frames, 1);
  });
  waiting.get_future().wait();
  // However long this is, the wait does not end by itself.
  EXPECT_EQ(result.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
  listener.onNewFrame(Frame::Color, new CountedFrame(alive, 6));
  EXPECT_TRUE(result.get());
  ASSERT_EQ(frames.count(Frame::Color), 1U);
  EXPECT_EQ(frames.at(Frame::Color)->sequence, 6U);
  listener.release(frames);
}

TEST(WaitIgnoringTimeout, HandsOutASetThatIsThere) {
  std::atomic<int> alive = 0;
  SyncMultiFrameListener listener(Frame::Color);
  FrameMap frames;
  listener.onNewFrame(Frame::Color, new CountedFrame(alive, 2));
  EXPECT_TRUE(listener.waitForNewFrame(frames, 0));
  EXPECT_EQ(frames.at(Frame::Color)->sequence, 2U);
  listener.release(frames);
}

TEST(WaitIgnoringTimeout, HasNewFrameTellsAStalledSensor) {
  const TemporaryFolder folder;
  write_recording(folder.path(), 2);
  write_device_yml(folder.path(), "pace: 0\nafter: stall\n");
  const SceneVariable scene(folder.path().string());
  SyncMultiFrameListener listener(Frame::Color | Frame::Ir | Frame::Depth);
  libfreenect2::Freenect2 context;
  libfreenect2::Freenect2Device* device = context.openDefaultDevice();
  ASSERT_NE(device, nullptr);
  device->setColorFrameListener(&listener);
  device->setIrAndDepthFrameListener(&listener);
  ASSERT_TRUE(device->start());
  FrameMap frames;
  for (unsigned int set = 0; set < 2; ++set) {
    ASSERT_TRUE(take_set(listener, frames));
    EXPECT_EQ(frames.at(Frame::Color)->sequence, set);
    listener.release(frames);
  }
  EXPECT_FALSE(listener.hasNewFrame());
  device->close();
}

#endif

}  // namespace
}  // namespace halcyra::virtual_kinect
