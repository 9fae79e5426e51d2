#include "record/sensor_loop.hpp"

#include <atomic>
#include <condition_variable>
#include <mutex>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "tests/support/fed_sensor.hpp"

namespace halcyra::record {
namespace {

using libfreenect2::Frame;

class SensorLoop : public ::testing::Test {
 protected:
  SensorLoop() {
    start_fed_sensor(kinect_);
    options_.sets = 1;
  }

  // Hands in a set whose depth frame has this number.
  void feed(std::uint32_t number) {
    const cv::Mat pixels(2, 3, CV_32FC1, cv::Scalar(number));
    feed_frame(kinect_, Frame::Color, cv::Mat(2, 3, CV_8UC4, cv::Scalar::all(number)));
    feed_frame(kinect_, Frame::Ir, pixels);
    auto depth = std::make_unique<Frame>(3, 2, 4);
    std::memcpy(depth->data, pixels.data, 24);
    depth->format = Frame::Float;
    depth->sequence = number;
    kinect_.listener->onNewFrame(Frame::Depth, depth.release());
  }

  EndReason take(SetQueue& queue) {
    return take_sets(kinect_, status_, options_, queue, taken_, [this] { return may_go_on_; });
  }

  KinectSession kinect_;
  RuntimeStatus status_;
  RecordOptions options_;
  TakenSets taken_;
  bool may_go_on_ = true;
  std::vector<float> depths_;  // of the committed sets
  const SetQueue::Commit keep_depth_ = [this](const RecordedSet& set) {
    depths_.push_back(set.frames[kDepth].pixels.at<float>(0, 0));
    return true;
  };
};

TEST_F(SensorLoop, EndsAtTheLimitOfSets) {
  SetQueue queue(
      4, 1, [](RecordedSet&) {}, keep_depth_);
  feed(7);
  EXPECT_EQ(take(queue), EndReason::kLimit);
  feed(8);
  options_.sets = 2;
  EXPECT_EQ(take(queue), EndReason::kLimit);
  queue.finish();
  EXPECT_EQ(taken_.kept, 2U);
  EXPECT_EQ(depths_, (std::vector<float>{7, 8}));
}

TEST_F(SensorLoop, GivesTheSetBackAtOnce) {
  SetQueue queue(
      4, 1, [](RecordedSet&) {}, keep_depth_);
  feed(1);
  take(queue);
  EXPECT_TRUE(kinect_.frames.empty());
  feed(2);
  EXPECT_TRUE(kinect_.listener->hasNewFrame());
}

TEST_F(SensorLoop, CountsWhatTheDriverSkipped) {
  SetQueue queue(
      4, 1, [](RecordedSet&) {}, keep_depth_);
  for (const std::uint32_t number : {4U, 5U, 9U}) {
    feed(number);
    options_.sets = taken_.kept + 1;
    take(queue);
  }
  EXPECT_EQ(taken_.depth.skipped(), 3U);
  EXPECT_EQ(taken_.dropped, 0U);
}

TEST_F(SensorLoop, DropsWholeSetsWhileTheQueueIsFull) {
  std::mutex encoding;
  encoding.lock();
  SetQueue queue(
      2, 1, [&](RecordedSet&) { const std::lock_guard wait(encoding); }, keep_depth_);
  for (const std::uint32_t number : {1U, 2U}) {
    feed(number);
    options_.sets = number;
    take(queue);
  }
  feed(3);
  options_.sets = 3;
  may_go_on_ = false;  // ends the loop about a second later
  EXPECT_EQ(take(queue), EndReason::kRefused);
  encoding.unlock();
  queue.finish();
  EXPECT_EQ(taken_.kept, 2U);
  EXPECT_EQ(taken_.dropped, 1U);
  EXPECT_EQ(depths_, (std::vector<float>{1, 2}));
}

TEST_F(SensorLoop, EndsWhenNothingCanBeWritten) {
  options_.sets = 100;
  SetQueue queue(
      4, 1, [](RecordedSet&) {}, [](const RecordedSet&) { return false; });
  feed(1);
  EXPECT_EQ(take(queue), EndReason::kNoWriting);
}

TEST_F(SensorLoop, CountsStreamsThatDoNotRunAsStalled) {
  SetQueue queue(
      4, 1, [](RecordedSet&) {}, keep_depth_);
  kinect_.streams_started = false;
  EXPECT_EQ(take(queue), EndReason::kStalled);
}

}  // namespace
}  // namespace halcyra::record
