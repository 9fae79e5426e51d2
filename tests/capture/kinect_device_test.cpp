#include "capture/kinect_device.hpp"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <libfreenect2/libfreenect2.hpp>
#include <opencv2/core.hpp>

#include "app/run_state/options.hpp"
#include "app/run_state/runtime_status.hpp"
#include "capture/frame_conversion.hpp"
#include "capture/frame_set.hpp"
#include "tests/support/event_messages.hpp"
#include "tests/support/fed_sensor.hpp"
#include "tests/support/same_pixels.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/virtual_kinect/scene_variable.hpp"
#include "tests/virtual_kinect/test_recording.hpp"

namespace halcyra {
namespace {

using Messages = std::vector<std::string>;
using virtual_kinect::SceneVariable;
using virtual_kinect::write_device_yml;
using virtual_kinect::write_image;
using virtual_kinect::write_recording;

// Everything that opening a sensor may say.
void expect_status(const RuntimeStatus& status, const RuntimeStatus& expected) {
  EXPECT_EQ(status.kinect_connected, expected.kinect_connected);
  EXPECT_EQ(status.kinect_serial, expected.kinect_serial);
  EXPECT_EQ(status.kinect_firmware, expected.kinect_firmware);
  EXPECT_EQ(status.kinect_message, expected.kinect_message);
  EXPECT_EQ(status.ir_message, expected.ir_message);
  EXPECT_EQ(status.depth_message, expected.depth_message);
  EXPECT_EQ(status.rgb_ok, expected.rgb_ok);
  EXPECT_EQ(status.ir_ok, expected.ir_ok);
  EXPECT_EQ(status.depth_ok, expected.depth_ok);
}

void expect_no_device(const KinectSession& session) {
  EXPECT_NE(session.context, nullptr);
  EXPECT_EQ(session.device, nullptr);
  EXPECT_EQ(session.listener, nullptr);
  EXPECT_FALSE(session.streams_started);
}

class OpenKinect : public ::testing::Test {
 protected:
  void record(const std::string& device_yml) {
    write_recording(folder_.path(), 2);
    write_device_yml(folder_.path(), device_yml);
  }
  void open() {
    const SceneVariable scene(folder_.path().string());
    open_kinect(session_, options_, status_);
  }
  Messages events() const { return event_messages(status_); }

  TemporaryFolder folder_;
  KinectSession session_;
  Options options_;
  RuntimeStatus status_;
};

TEST_F(OpenKinect, LooksForNoDeviceInNoCameraMode) {
  // Who enumerates devices hears that there is no such folder.
  const SceneVariable scene((folder_.path() / "missing").string());
  options_.no_camera = true;
  ::testing::internal::CaptureStderr();
  open_kinect(session_, options_, status_);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");

  RuntimeStatus expected;
  expected.kinect_message = "no-camera mode requested";
  expect_status(status_, expected);
  EXPECT_EQ(events(), Messages{"No-camera mode active"});
  expect_no_device(session_);
}

TEST_F(OpenKinect, SaysThatThereIsNoDevice) {
  const SceneVariable scene((folder_.path() / "missing").string());
  ::testing::internal::CaptureStderr();
  open_kinect(session_, options_, status_);
  EXPECT_NE(::testing::internal::GetCapturedStderr(), "");

  RuntimeStatus expected;
  expected.kinect_message = "no Kinect v2 device detected";
  expect_status(status_, expected);
  EXPECT_EQ(events(), Messages{"No Kinect v2 device detected"});
  expect_no_device(session_);
}

TEST_F(OpenKinect, SaysThatTheDeviceCannotBeOpened) {
  record("open: fail\nserial: \"A1\"\n");
  open();
  RuntimeStatus expected;
  expected.kinect_connected = true;
  expected.kinect_message = "failed to open Kinect device";
  expect_status(status_, expected);
  EXPECT_EQ(events(), Messages{"Kinect open failed"});
  expect_no_device(session_);
}

TEST_F(OpenKinect, SaysThatTheStreamsCannotBeStartedAndKeepsTheDevice) {
  record("start: fail\nserial: \"A1\"\n");
  open();
  RuntimeStatus expected;
  expected.kinect_connected = true;
  expected.kinect_message = "failed to start RGB/IR/Depth streams";
  expected.ir_message = "Kinect stream start failed";
  expected.depth_message = "Kinect stream start failed";
  expect_status(status_, expected);
  EXPECT_EQ(events(), Messages{"RGB/IR/Depth stream start failed"});
  EXPECT_NE(session_.device, nullptr);
  EXPECT_NE(session_.listener, nullptr);
  EXPECT_FALSE(session_.streams_started);

  EXPECT_FALSE(take_frame_set(session_, status_));
  expect_status(status_, expected);
  close_kinect(session_);
}

TEST_F(OpenKinect, StartsTheStreams) {
  record("serial: \"0042-A\"\nfirmware: \"4.3.21\"\n");
  open();
  RuntimeStatus expected;
  expected.kinect_connected = true;
  expected.rgb_ok = true;
  expected.kinect_serial = "0042-A";
  expected.kinect_firmware = "4.3.21";
  expected.kinect_message = "Kinect RGB/IR/Depth streams running";
  expected.ir_message = "waiting for IR frames";
  expected.depth_message = "waiting for depth frames";
  expect_status(status_, expected);
  EXPECT_EQ(events(), (Messages{"Kinect connected: 0042-A", "RGB/IR/Depth streams started"}));
  EXPECT_TRUE(session_.streams_started);
  close_kinect(session_);
}

TEST_F(OpenKinect, DeliversEveryStreamOfTheDevice) {
  cv::Mat color(5, 7, CV_8UC3);
  cv::Mat infrared(4, 6, CV_16UC1);
  cv::Mat depth(4, 6, CV_16UC1);
  cv::randu(color, 0, 256);
  cv::randu(infrared, 1, 9000);
  cv::randu(depth, 0, 9000);
  write_image(folder_.path() / "color" / "1.png", color);
  write_image(folder_.path() / "ir" / "1.png", infrared);
  write_image(folder_.path() / "depth" / "1.png", depth);
  open();

  ASSERT_TRUE(take_frame_set(session_, status_));
  cv::Mat infrared_preview;
  cv::Mat depth_preview;
  convert_infrared(session_, status_, infrared_preview);
  convert_depth(session_, status_, depth_preview);
  ColorImages images;
  ASSERT_TRUE(convert_color(session_, images));
  EXPECT_TRUE(same_pixels(images.bgr, color));
  release_frame_set(session_);

  cv::Mat expected;
  infrared.convertTo(infrared, CV_32F);
  ASSERT_TRUE(infrared_picture(infrared, expected));
  EXPECT_TRUE(same_pixels(infrared_preview, expected));
  depth.convertTo(depth, CV_32F);
  ASSERT_TRUE(depth_picture(depth, expected));
  EXPECT_TRUE(same_pixels(depth_preview, expected));
  close_kinect(session_);
}

// ---- Closing.

class RecordingDevice final : public libfreenect2::Freenect2Device {
 public:
  std::vector<std::string> calls;

  std::string getSerialNumber() override { return call("serial"), ""; }
  std::string getFirmwareVersion() override { return call("firmware"), ""; }
  void setColorFrameListener(libfreenect2::FrameListener*) override { call("color listener"); }
  void setIrAndDepthFrameListener(libfreenect2::FrameListener*) override { call("ir listener"); }
  bool start() override { return call("start"); }
  bool startStreams(bool, bool) override { return call("start streams"); }
  bool stop() override { return call("stop"); }
  bool close() override { return call("close"); }

 private:
  // False, as from a sensor that was unplugged.
  bool call(const char* name) {
    calls.emplace_back(name);
    return false;
  }
};

TEST(CloseKinect, StopsTheStreamsAndThenCloses) {
  RecordingDevice device;
  KinectSession session;
  session.device = &device;
  session.streams_started = true;
  close_kinect(session);
  EXPECT_EQ(device.calls, (std::vector<std::string>{"stop", "close"}));
}

TEST(CloseKinect, StopsNoStreamsThatHadNotStarted) {
  RecordingDevice device;
  KinectSession session;
  session.device = &device;
  close_kinect(session);
  EXPECT_EQ(device.calls, std::vector<std::string>{"close"});
}

TEST(CloseKinect, DoesNothingWithoutADevice) {
  KinectSession session;
  close_kinect(session);
  EXPECT_EQ(session.device, nullptr);
}

TEST_F(OpenKinect, KeepsContextAndListenerAfterClosing) {
  record("");
  open();
  close_kinect(session_);
  EXPECT_NE(session_.context, nullptr);
  EXPECT_NE(session_.listener, nullptr);
}

// ---- Ending without closing.

// The device delivers one more set while it is stopped, which the listener must still be there to
// take. Sanitizers see when it is not.
TEST_F(OpenKinect, MayBeDestroyedWithoutBeingClosed) {
  record("pace: 0\nstop: late\n");
  const SceneVariable scene(folder_.path().string());
  KinectSession session;
  open_kinect(session, options_, status_);
  ASSERT_TRUE(take_frame_set(session, status_));
  release_frame_set(session);
}

TEST_F(OpenKinect, MayBeDestroyedWhileItHoldsASet) {
  record("pace: 0\nstop: late\n");
  const SceneVariable scene(folder_.path().string());
  KinectSession session;
  open_kinect(session, options_, status_);
  EXPECT_TRUE(take_frame_set(session, status_));
}

class CountedFrame : public libfreenect2::Frame {
 public:
  explicit CountedFrame(int& alive) : Frame(1, 1, 4), alive_(alive) { ++alive_; }
  ~CountedFrame() override { --alive_; }

 private:
  int& alive_;
};

TEST(KinectSession, ReleasesTheSetItHoldsWhenDestroyed) {
  using libfreenect2::Frame;
  int alive = 0;
  {
    KinectSession session;
    RuntimeStatus status;
    start_fed_sensor(session);
    for (const Frame::Type type : {Frame::Color, Frame::Ir, Frame::Depth}) {
      ASSERT_TRUE(session.listener->onNewFrame(type, new CountedFrame(alive)));
    }
    ASSERT_TRUE(take_frame_set(session, status));
    EXPECT_EQ(alive, 3);
  }
  EXPECT_EQ(alive, 0);
}

}  // namespace
}  // namespace halcyra
