#include "capture/frame_set.hpp"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <functional>
#include <future>
#include <memory>
#include <ostream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <libfreenect2/frame_listener.hpp>
#include <libfreenect2/frame_listener_impl.h>
#include <opencv2/core.hpp>

#include "app/run_state/runtime_status.hpp"
#include "capture/frame_conversion.hpp"
#include "tests/support/counted_frame.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

using libfreenect2::Frame;
using libfreenect2::SyncMultiFrameListener;

// A frame with a copy of `pixels`, which have four bytes each.
std::unique_ptr<Frame> make_frame(const cv::Mat& pixels, Frame::Format format) {
  auto frame = std::make_unique<Frame>(static_cast<std::size_t>(pixels.cols),
                                       static_cast<std::size_t>(pixels.rows), pixels.elemSize());
  std::memcpy(frame->data, pixels.data, pixels.total() * pixels.elemSize());
  frame->format = format;
  return frame;
}

cv::Mat random_pixels(int type, double low, double high) {
  cv::Mat pixels(4, 6, type);
  cv::randu(pixels, low, high);
  return pixels;
}

cv::Mat some_picture() { return cv::Mat(2, 3, CV_8UC3, cv::Scalar(1, 2, 3)); }

// What a frame's fields may look like when its pixels cannot be read.
struct Damage {
  const char* name;
  std::function<void(Frame&)> apply;
};

const std::vector<Damage>& damages() {
  static const std::vector<Damage> all = {
      {"no data", [](Frame& frame) { frame.data = nullptr; }},
      {"no width", [](Frame& frame) { frame.width = 0; }},
      {"no height", [](Frame& frame) { frame.height = 0; }},
      {"no bytes per pixel", [](Frame& frame) { frame.bytes_per_pixel = 0; }},
      {"one byte per pixel", [](Frame& frame) { frame.bytes_per_pixel = 1; }},
      {"three bytes per pixel", [](Frame& frame) { frame.bytes_per_pixel = 3; }},
      {"eight bytes per pixel", [](Frame& frame) { frame.bytes_per_pixel = 8; }},
  };
  return all;
}

// ---- Infrared and depth, which differ in their sentences only.

struct Stream {
  const char* name;
  Frame::Type type;
  void (*convert)(const KinectSession&, RuntimeStatus&, cv::Mat&);
  bool (*picture)(const cv::Mat&, cv::Mat&);
  bool RuntimeStatus::*ok;
  std::string RuntimeStatus::*message;
  const char* running;
  const char* unavailable;
  float low;  // of pixels that can be converted
  float high;
  float barren;  // a frame of this value alone cannot be converted
};

std::ostream& operator<<(std::ostream& out, const Stream& stream) { return out << stream.name; }

const Stream kInfrared = {"infrared",
                          Frame::Ir,
                          convert_infrared,
                          infrared_picture,
                          &RuntimeStatus::ir_ok,
                          &RuntimeStatus::ir_message,
                          "IR stream running",
                          "IR frame unavailable or not convertible",
                          10,
                          5000,
                          300};
const Stream kDepth = {"depth",
                       Frame::Depth,
                       convert_depth,
                       depth_picture,
                       &RuntimeStatus::depth_ok,
                       &RuntimeStatus::depth_message,
                       "Depth stream running",
                       "Depth frame unavailable or not convertible",
                       600,
                       4000,
                       100};

class FloatStream : public ::testing::TestWithParam<Stream> {
 protected:
  const Stream& stream() const { return GetParam(); }

  void hold(std::unique_ptr<Frame> frame) {
    frame_ = std::move(frame);
    session_.frames[stream().type] = frame_.get();
  }
  void hold(const cv::Mat& pixels) { hold(make_frame(pixels, Frame::Float)); }
  void hold_damaged(const Damage& damage) {
    hold(random_pixels(CV_32FC1, stream().low, stream().high));
    damage.apply(*frame_);
  }

  void convert() { stream().convert(session_, status_, preview_); }
  bool ok() const { return status_.*stream().ok; }
  const std::string& message() const { return status_.*stream().message; }

  void expect_unavailable() {
    status_.*stream().message = "as before";
    convert();
    EXPECT_FALSE(ok());
    EXPECT_EQ(message(), stream().unavailable);
    EXPECT_TRUE(same_pixels(preview_, some_picture()));
  }

  void expect_still_running() {
    const cv::Mat before = preview_.clone();
    convert();
    EXPECT_TRUE(ok());
    EXPECT_EQ(message(), stream().running);
    EXPECT_TRUE(same_pixels(preview_, before));
  }

  std::unique_ptr<Frame> frame_;
  KinectSession session_;
  RuntimeStatus status_;
  cv::Mat preview_ = some_picture();
};

INSTANTIATE_TEST_SUITE_P(Both, FloatStream, ::testing::Values(kInfrared, kDepth),
                         ::testing::PrintToStringParamName());

TEST_P(FloatStream, RenewsThePreviewFromAFrame) {
  const cv::Mat pixels = random_pixels(CV_32FC1, stream().low, stream().high);
  hold(pixels);
  convert();
  cv::Mat expected;
  ASSERT_TRUE(stream().picture(pixels, expected));
  EXPECT_TRUE(ok());
  EXPECT_EQ(message(), stream().running);
  EXPECT_TRUE(same_pixels(preview_, expected));
}

TEST_P(FloatStream, TouchesNothingOfTheOtherStreams) {
  hold(random_pixels(CV_32FC1, stream().low, stream().high));
  convert();
  const RuntimeStatus fresh;
  const Stream& other = stream().type == Frame::Ir ? kDepth : kInfrared;
  EXPECT_FALSE(status_.*other.ok);
  EXPECT_EQ(status_.*other.message, fresh.*other.message);
  EXPECT_EQ(status_.kinect_message, fresh.kinect_message);
  EXPECT_FALSE(status_.rgb_ok);
  EXPECT_TRUE(status_.events.empty());
}

TEST_P(FloatStream, SaysThatAMissingFrameIsUnavailable) {
  expect_unavailable();
  session_.frames[stream().type] = nullptr;
  expect_unavailable();
}

TEST_P(FloatStream, SaysThatADamagedFrameIsUnavailable) {
  for (const Damage& damage : damages()) {
    SCOPED_TRACE(damage.name);
    hold_damaged(damage);
    expect_unavailable();
  }
}

TEST_P(FloatStream, SaysThatABarrenFrameIsUnavailable) {
  hold(cv::Mat(4, 6, CV_32FC1, cv::Scalar(stream().barren)));
  expect_unavailable();
}

TEST_P(FloatStream, KeepsRunningThroughBadFramesOnceItHasRun) {
  hold(random_pixels(CV_32FC1, stream().low, stream().high));
  convert();
  ASSERT_TRUE(ok());
  for (const Damage& damage : damages()) {
    SCOPED_TRACE(damage.name);
    hold_damaged(damage);
    expect_still_running();
  }
  hold(cv::Mat(4, 6, CV_32FC1, cv::Scalar(stream().barren)));
  expect_still_running();
  session_.frames.clear();
  expect_still_running();
}

TEST_P(FloatStream, RunsAfterItWasUnavailable) {
  expect_unavailable();
  hold(random_pixels(CV_32FC1, stream().low, stream().high));
  convert();
  EXPECT_TRUE(ok());
  EXPECT_EQ(message(), stream().running);
}

TEST_P(FloatStream, LeavesTheFrameAsItWas) {
  const cv::Mat pixels = random_pixels(CV_32FC1, stream().low, stream().high);
  hold(pixels);
  convert();
  EXPECT_EQ(std::memcmp(frame_->data, pixels.data, pixels.total() * pixels.elemSize()), 0);
}

// ---- Colour.

KinectSession color_session(const std::unique_ptr<Frame>& frame) {
  KinectSession session;
  session.frames[Frame::Color] = frame.get();
  return session;
}

ColorImages converted(const cv::Mat& pixels, ChannelOrder order) {
  ColorImages images;
  color_images(pixels, order, images);
  return images;
}

TEST(ConvertColor, ReadsTheFrameInItsChannelOrder) {
  const cv::Mat pixels = random_pixels(CV_8UC4, 0, 256);
  const std::unique_ptr<Frame> frame = make_frame(pixels, Frame::RGBX);
  ColorImages images;
  EXPECT_TRUE(convert_color(color_session(frame), images));
  const ColorImages expected = converted(pixels, ChannelOrder::kRgbx);
  EXPECT_TRUE(same_pixels(images.bgr, expected.bgr));
  EXPECT_TRUE(same_pixels(images.grey, expected.grey));
}

TEST(ConvertColor, ReadsEveryOtherFormatAsBgrx) {
  const cv::Mat pixels = random_pixels(CV_8UC4, 0, 256);
  const ColorImages expected = converted(pixels, ChannelOrder::kBgrx);
  for (const Frame::Format format :
       {Frame::BGRX, Frame::Invalid, Frame::Raw, Frame::Float, Frame::Gray}) {
    const std::unique_ptr<Frame> frame = make_frame(pixels, format);
    ColorImages images;
    EXPECT_TRUE(convert_color(color_session(frame), images));
    EXPECT_TRUE(same_pixels(images.bgr, expected.bgr)) << format;
    EXPECT_TRUE(same_pixels(images.grey, expected.grey)) << format;
  }
}

TEST(ConvertColor, OutlivesTheFrame) {
  std::unique_ptr<Frame> frame =
      make_frame(cv::Mat(2, 2, CV_8UC4, cv::Scalar(1, 2, 3, 4)), Frame::BGRX);
  ColorImages images;
  EXPECT_TRUE(convert_color(color_session(frame), images));
  std::memset(frame->data, 200, 16);
  EXPECT_TRUE(same_pixels(images.bgr, cv::Mat(2, 2, CV_8UC3, cv::Scalar(1, 2, 3))));
}

TEST(ConvertColor, KeepsTheImagesWithoutAUsableFrame) {
  const ColorImages kept = converted(random_pixels(CV_8UC4, 0, 256), ChannelOrder::kBgrx);
  ColorImages images{kept.bgr.clone(), kept.grey.clone()};
  for (const Damage& damage : damages()) {
    const std::unique_ptr<Frame> frame = make_frame(random_pixels(CV_8UC4, 0, 256), Frame::BGRX);
    damage.apply(*frame);
    EXPECT_FALSE(convert_color(color_session(frame), images)) << damage.name;
  }
  EXPECT_FALSE(convert_color(KinectSession(), images));
  EXPECT_FALSE(convert_color(color_session(nullptr), images));
  EXPECT_TRUE(same_pixels(images.bgr, kept.bgr));
  EXPECT_TRUE(same_pixels(images.grey, kept.grey));
}

// ---- Taking and giving back.

constexpr unsigned int kAllTypes = Frame::Color | Frame::Ir | Frame::Depth;

KinectSession running_session() {
  KinectSession session;
  session.listener = std::make_unique<SyncMultiFrameListener>(kAllTypes);
  session.streams_started = true;
  return session;
}

void deliver(SyncMultiFrameListener& listener, Frame::Type type) {
  auto frame = std::make_unique<Frame>(2, 2, 4);
  if (listener.onNewFrame(type, frame.get())) static_cast<void>(frame.release());
}

void deliver_set(SyncMultiFrameListener& listener) {
  for (const Frame::Type type : {Frame::Color, Frame::Ir, Frame::Depth}) deliver(listener, type);
}

void expect_sentences(const RuntimeStatus& status, const RuntimeStatus& expected) {
  EXPECT_EQ(status.kinect_message, expected.kinect_message);
  EXPECT_EQ(status.ir_message, expected.ir_message);
  EXPECT_EQ(status.depth_message, expected.depth_message);
  EXPECT_TRUE(status.events.empty());
}

TEST(TakeFrameSet, TakesNothingUnlessTheStreamsRun) {
  RuntimeStatus status;
  KinectSession without_listener;
  without_listener.streams_started = true;
  EXPECT_FALSE(take_frame_set(without_listener, status));

  KinectSession not_started = running_session();
  not_started.streams_started = false;
  deliver_set(*not_started.listener);
  EXPECT_FALSE(take_frame_set(not_started, status));
  EXPECT_TRUE(not_started.frames.empty());
  expect_sentences(status, RuntimeStatus());
}

TEST(TakeFrameSet, HoldsTheWholeSetAndSaysNothing) {
  KinectSession session = running_session();
  deliver_set(*session.listener);
  RuntimeStatus status;
  EXPECT_TRUE(take_frame_set(session, status));
  EXPECT_EQ(session.frames.size(), 3U);
  for (const auto& [type, frame] : session.frames) EXPECT_NE(frame, nullptr) << type;
  expect_sentences(status, RuntimeStatus());
  release_frame_set(session);
}

TEST(TakeFrameSet, WaitsForASetThatIsStillToCome) {
  KinectSession session = running_session();
  std::thread driver([&session] { deliver_set(*session.listener); });
  RuntimeStatus status;
  EXPECT_TRUE(take_frame_set(session, status));
  driver.join();
  release_frame_set(session);
}

TEST(TakeFrameSet, DoesNotTakeBackTheSentenceOfATimeout) {
  KinectSession session = running_session();
  deliver_set(*session.listener);
  RuntimeStatus status;
  status.kinect_message = "timeout waiting for Kinect frame";
  EXPECT_TRUE(take_frame_set(session, status));
  EXPECT_EQ(status.kinect_message, "timeout waiting for Kinect frame");
  release_frame_set(session);
}

struct TimedOut {
  RuntimeStatus status;
  bool taken = true;
  std::size_t frames_held = 0;
  std::chrono::steady_clock::duration waited{};
};

// Waits for a set of which only the colour and infrared frames ever come.
TimedOut run_into_timeout(bool ir_ok, bool depth_ok) {
  KinectSession session = running_session();
  deliver(*session.listener, Frame::Color);
  deliver(*session.listener, Frame::Ir);
  TimedOut result;
  result.status.kinect_message = "Kinect RGB/IR/Depth streams running";
  result.status.ir_message = "infrared as before";
  result.status.depth_message = "depth as before";
  result.status.ir_ok = ir_ok;
  result.status.depth_ok = depth_ok;
  const auto start = std::chrono::steady_clock::now();
  result.taken = take_frame_set(session, result.status);
  result.waited = std::chrono::steady_clock::now() - start;
  result.frames_held = session.frames.size();
  return result;
}

// All four run at the same time, as each waits the full second.
TEST(TakeFrameSet, ReportsATimeoutForStreamsThatHaveNeverDelivered) {
  std::vector<std::future<TimedOut>> waiting;
  for (const auto& [ir_ok, depth_ok] : std::vector<std::pair<bool, bool>>{
           {false, false}, {false, true}, {true, false}, {true, true}}) {
    waiting.push_back(std::async(std::launch::async, run_into_timeout, ir_ok, depth_ok));
  }
  for (std::future<TimedOut>& future : waiting) {
    const TimedOut result = future.get();
    const bool ir_ok = result.status.ir_ok;
    const bool depth_ok = result.status.depth_ok;
    SCOPED_TRACE(::testing::Message() << "infrared " << ir_ok << ", depth " << depth_ok);
    EXPECT_FALSE(result.taken);
    EXPECT_EQ(result.frames_held, 0U);
    EXPECT_GE(result.waited, std::chrono::milliseconds(1000));
    RuntimeStatus expected;
    expected.kinect_message = "timeout waiting for Kinect frame";
    expected.ir_message = ir_ok ? "infrared as before" : "timeout waiting for IR frame";
    expected.depth_message = depth_ok ? "depth as before" : "timeout waiting for depth frame";
    expect_sentences(result.status, expected);
  }
}

TEST(ReleaseFrameSet, GivesTheFramesBackSoThatTheNextSetCanCome) {
  KinectSession session = running_session();
  RuntimeStatus status;
  std::atomic<int> alive = 0;
  for (int set = 0; set < 3; ++set) {
    for (const Frame::Type type : {Frame::Color, Frame::Ir, Frame::Depth}) {
      ASSERT_TRUE(session.listener->onNewFrame(type, new CountedFrame(alive)));
    }
    ASSERT_TRUE(take_frame_set(session, status)) << "set " << set;
    EXPECT_EQ(alive, 3);
    release_frame_set(session);
    EXPECT_EQ(alive, 0);
    EXPECT_TRUE(session.frames.empty());
  }
}

}  // namespace
}  // namespace halcyra
