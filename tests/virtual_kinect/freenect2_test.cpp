#include <algorithm>
#include <atomic>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>

#include <gtest/gtest.h>
#include <libfreenect2/frame_listener_impl.h>
#include <libfreenect2/libfreenect2.hpp>

#include "tests/support/temporary_folder.hpp"
#include "tests/virtual_kinect/scene_variable.hpp"
#include "tests/virtual_kinect/take_set.hpp"
#include "tests/virtual_kinect/test_recording.hpp"

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;
using libfreenect2::FrameMap;
using libfreenect2::Freenect2;
using libfreenect2::Freenect2Device;
using libfreenect2::SyncMultiFrameListener;

class Freenect2Test : public testing::Test {
 protected:
  // Opens and starts the recording's device.
  Freenect2Device* start() {
    Freenect2Device* device = context_.openDefaultDevice();
    if (device != nullptr) {
      device->setColorFrameListener(&listener_);
      device->setIrAndDepthFrameListener(&listener_);
      EXPECT_TRUE(device->start());
    }
    return device;
  }

  TemporaryFolder folder_;
  SceneVariable scene_{folder_.path().string()};
  SyncMultiFrameListener listener_{Frame::Color | Frame::Ir | Frame::Depth};
  FrameMap frames_;
  Freenect2 context_;
};

TEST_F(Freenect2Test, WithoutASceneThereIsNoDevice) {
  unsetenv("VIRTUAL_KINECT");
  testing::internal::CaptureStderr();
  EXPECT_EQ(context_.enumerateDevices(), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(context_.getDefaultDeviceSerialNumber(), "");
  EXPECT_EQ(context_.getDeviceSerialNumber(0), "");
  EXPECT_EQ(context_.openDefaultDevice(), nullptr);
  EXPECT_EQ(context_.openDevice(0), nullptr);
  EXPECT_EQ(context_.openDevice(""), nullptr);
}

TEST_F(Freenect2Test, ASceneThatCannotBeUsedIsSaidWhenDevicesAreEnumerated) {
  testing::internal::CaptureStderr();
  const SceneVariable scene("/no/such/recording");
  Freenect2 context;
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  testing::internal::CaptureStderr();
  EXPECT_EQ(context.enumerateDevices(), 0);
  const std::string said = testing::internal::GetCapturedStderr();
  EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
  EXPECT_NE(said.find("/no/such/recording"), std::string::npos) << said;
  testing::internal::CaptureStderr();
  EXPECT_EQ(context.getDefaultDeviceSerialNumber(), "");
  EXPECT_EQ(context.openDefaultDevice(), nullptr);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(Freenect2Test, ARecordingIsOneDevice) {
  write_device_yml(folder_.path(), "serial: \"007\"\nfirmware: \"1.0\"\n");
  EXPECT_EQ(context_.enumerateDevices(), 1);
  EXPECT_EQ(context_.getDefaultDeviceSerialNumber(), "007");
  EXPECT_EQ(context_.getDeviceSerialNumber(0), "007");
  EXPECT_EQ(context_.getDeviceSerialNumber(1), "");
  EXPECT_EQ(context_.getDeviceSerialNumber(-1), "");
}

TEST_F(Freenect2Test, DevicesAreFoundWithoutEnumeratingFirst) {
  EXPECT_EQ(context_.getDefaultDeviceSerialNumber(), "000000000000");
  EXPECT_NE(Freenect2().openDefaultDevice(), nullptr);
}

TEST_F(Freenect2Test, OpensByIndexAndBySerial) {
  write_device_yml(folder_.path(), "serial: \"007\"\n");
  for (int way = 0; way < 3; ++way) {
    Freenect2 context;
    Freenect2Device* const device = way == 0   ? context.openDevice(0)
                                    : way == 1 ? context.openDevice("007")
                                               : context.openDefaultDevice();
    ASSERT_NE(device, nullptr);
    EXPECT_EQ(device->getSerialNumber(), "007");
    EXPECT_EQ(device->getFirmwareVersion(), "<unknown>");
  }
}

TEST_F(Freenect2Test, UnknownDevicesAreNotOpened) {
  EXPECT_EQ(context_.openDevice(1), nullptr);
  EXPECT_EQ(context_.openDevice(-1), nullptr);
  EXPECT_EQ(context_.openDevice("007"), nullptr);
  EXPECT_EQ(context_.openDevice(""), nullptr);
}

TEST_F(Freenect2Test, ADeviceMayFailToOpen) {
  write_device_yml(folder_.path(), "open: fail\n");
  EXPECT_EQ(context_.enumerateDevices(), 1);
  EXPECT_EQ(context_.getDefaultDeviceSerialNumber(), "000000000000");
  EXPECT_EQ(context_.openDefaultDevice(), nullptr);
  EXPECT_EQ(context_.openDevice(0), nullptr);
  EXPECT_EQ(context_.openDevice("000000000000"), nullptr);
}

TEST_F(Freenect2Test, ADeviceMayFailToStart) {
  write_device_yml(folder_.path(), "start: fail\n");
  Freenect2Device* const device = context_.openDefaultDevice();
  ASSERT_NE(device, nullptr);
  EXPECT_FALSE(device->start());
  EXPECT_EQ(device->getFirmwareVersion(), "<unknown>");
}

TEST_F(Freenect2Test, AnOpenDeviceIsReturnedAgain) {
  Freenect2Device* const device = context_.openDefaultDevice();
  EXPECT_EQ(context_.openDevice(0), device);
  EXPECT_EQ(context_.enumerateDevices(), 1);
  device->close();
  Freenect2Device* const second = context_.openDevice(0);
  EXPECT_NE(second, device);
  EXPECT_TRUE(second->start());
}

TEST_F(Freenect2Test, EnumeratingLooksAgain) {
  {
    const SceneVariable nothing("");
    EXPECT_EQ(context_.enumerateDevices(), 0);
  }
  const SceneVariable recording(folder_.path().string());
  EXPECT_EQ(context_.enumerateDevices(), 1);
  write_device_yml(folder_.path(), "serial: second\n");
  EXPECT_EQ(context_.enumerateDevices(), 1);
  EXPECT_EQ(context_.getDefaultDeviceSerialNumber(), "second");
}

TEST_F(Freenect2Test, TheContextTakesTheDevicesAlong) {
  write_recording(folder_.path(), 1);
  for (const char* pace : {"pace: 0\n", "pace: 120\n"}) {
    write_device_yml(folder_.path(), pace);
    SyncMultiFrameListener listener(Frame::Color);
    {
      Freenect2 context;
      Freenect2Device* const device = context.openDefaultDevice();
      device->setColorFrameListener(&listener);
      ASSERT_TRUE(device->start());
      ASSERT_TRUE(take_set(listener, frames_));
    }
    EXPECT_EQ(frames_.at(Frame::Color)->data[2], 200);
    listener.release(frames_);
  }
}

TEST_F(Freenect2Test, ADeviceMayBeDeletedByItsUser) {
  delete context_.openDefaultDevice();
  Freenect2Device* const device = context_.openDefaultDevice();
  EXPECT_TRUE(device->close());
  delete device;
}

TEST_F(Freenect2Test, PlaysTheRecordingInLockstep) {
  write_recording(folder_.path(), 3);
  write_device_yml(folder_.path(), "pace: 0\nfirmware: \"9.9\"\n");
  Freenect2Device* const device = start();
  EXPECT_EQ(device->getFirmwareVersion(), "9.9");
  for (std::uint32_t set = 0; set < 200; ++set) {
    ASSERT_TRUE(take_set(listener_, frames_));
    ASSERT_EQ(frames_.size(), 3U);
    for (const auto& [type, frame] : frames_) ASSERT_EQ(frame->sequence, set);
    ASSERT_EQ(frames_.at(Frame::Color)->data[0], set % 3);
    const auto* const depth = reinterpret_cast<const float*>(frames_.at(Frame::Depth)->data);
    ASSERT_EQ(depth[9], 2000.0F + static_cast<float>(set % 3));
    listener_.release(frames_);
  }
  EXPECT_TRUE(device->stop());
  EXPECT_TRUE(device->close());
}

TEST_F(Freenect2Test, FramesHaveTheSizeAndFormatOfTheirFiles) {
  write_recording(folder_.path(), 1);
  start();
  ASSERT_TRUE(take_set(listener_, frames_));
  const Frame& color = *frames_.at(Frame::Color);
  EXPECT_EQ(color.width, 4U);
  EXPECT_EQ(color.height, 3U);
  EXPECT_EQ(color.bytes_per_pixel, 4U);
  EXPECT_EQ(color.format, Frame::BGRX);
  for (const Frame::Type type : {Frame::Ir, Frame::Depth}) {
    const Frame& frame = *frames_.at(type);
    EXPECT_EQ(frame.width, 5U);
    EXPECT_EQ(frame.height, 2U);
    EXPECT_EQ(frame.bytes_per_pixel, 4U);
    EXPECT_EQ(frame.format, Frame::Float);
  }
  listener_.release(frames_);
  context_.openDefaultDevice()->close();
}

TEST_F(Freenect2Test, AnUnreadableFileIsAFrameWithoutData) {
  write_recording(folder_.path(), 2);
  write_device_yml(folder_.path(), "pace: 0\n");
  write_text(folder_.path() / "color" / numbered(0), "");
  write_text(folder_.path() / "depth" / numbered(1), "not a picture");
  Freenect2Device* const device = start();
  for (int set = 0; set < 4; ++set) {
    ASSERT_TRUE(take_set(listener_, frames_));
    EXPECT_EQ(frames_.at(Frame::Color)->data == nullptr, set % 2 == 0);
    EXPECT_NE(frames_.at(Frame::Ir)->data, nullptr);
    EXPECT_EQ(frames_.at(Frame::Depth)->data == nullptr, set % 2 == 1);
    listener_.release(frames_);
  }
  device->close();
}

TEST_F(Freenect2Test, WithoutOneStreamNoSetIsComplete) {
  write_recording(folder_.path(), 2);
  std::filesystem::remove_all(folder_.path() / "ir");
  SyncMultiFrameListener color_and_depth(Frame::Color | Frame::Depth);
  Freenect2Device* const device = context_.openDefaultDevice();
  device->setColorFrameListener(&color_and_depth);
  device->setIrAndDepthFrameListener(&color_and_depth);
  ASSERT_TRUE(device->start());
  ASSERT_TRUE(take_set(color_and_depth, frames_));
  color_and_depth.release(frames_);
  device->close();

  start();
  EXPECT_FALSE(listener_.hasNewFrame());
  context_.openDefaultDevice()->close();
  EXPECT_FALSE(listener_.hasNewFrame());
}

TEST_F(Freenect2Test, ARecordingMayVanishWhileItPlays) {
  write_recording(folder_.path(), 3);
  write_device_yml(folder_.path(), "pace: 0\n");
  Freenect2Device* device = start();
  ASSERT_TRUE(take_set(listener_, frames_));
  std::filesystem::remove_all(folder_.path());
  for (std::uint32_t set = 1; set < 7; ++set) {
    listener_.release(frames_);
    ASSERT_TRUE(take_set(listener_, frames_));
    // The first file was read in time, the second perhaps, the third not.
    if (set % 3 != 1) {
      EXPECT_EQ(frames_.at(Frame::Color)->data != nullptr, set % 3 == 0);
    }
  }
  listener_.release(frames_);
  device->close();
  device = start();  // as enumerated before, with nothing left to play
  EXPECT_TRUE(device->close());
}

TEST_F(Freenect2Test, TheInterfaceCannotBeCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<Freenect2>);
  EXPECT_FALSE(std::is_copy_constructible_v<SyncMultiFrameListener>);
  EXPECT_FALSE(std::is_copy_constructible_v<Frame>);
  EXPECT_TRUE(std::is_abstract_v<Freenect2Device>);
  EXPECT_TRUE(std::has_virtual_destructor_v<Freenect2Device>);
}

}  // namespace
}  // namespace halcyra::virtual_kinect
