// A delivery that loses and damages frames, pauses, fails, and sends a set too late.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include <gtest/gtest.h>
#include <libfreenect2/frame_listener_impl.h>

#include "tests/virtual_kinect/take_set.hpp"
#include "virtual_kinect/delivery.hpp"
#include "virtual_kinect/frame_faults.hpp"

namespace halcyra::virtual_kinect {
namespace {

using libfreenect2::Frame;
using libfreenect2::FrameListener;
using libfreenect2::FrameMap;
using libfreenect2::SyncMultiFrameListener;

constexpr unsigned int kAllTypes = Frame::Color | Frame::Ir | Frame::Depth;

FrameSource pixel_source(std::optional<std::uint64_t> set_count = std::nullopt) {
  FrameSource source;
  source.streams = {Frame::Color, Frame::Ir, Frame::Depth};
  source.set_count = set_count;
  source.image = [](Frame::Type, std::uint64_t set) {
    return StreamImage{cv::Mat(2, 2, CV_32FC1, cv::Scalar(static_cast<double>(set))),
                       cv::Size(2, 2), 4, Frame::Float};
  };
  return source;
}

Listeners both(FrameListener& listener) { return {&listener, &listener}; }

DeliverySettings paced(int pace) {
  DeliverySettings settings;
  settings.pace = pace;
  return settings;
}

// The sequence number of each frame of the next set.
std::set<std::uint32_t> next_sequences(SyncMultiFrameListener& listener) {
  FrameMap frames;
  std::set<std::uint32_t> sequences;
  EXPECT_TRUE(take_set(listener, frames));
  for (const auto& [type, frame] : frames) sequences.insert(frame->sequence);
  listener.release(frames);
  return sequences;
}

bool ends(const Delivery& delivery) {
  const auto limit = std::chrono::steady_clock::now() + kPatience;
  while (!delivery.is_over() && std::chrono::steady_clock::now() < limit) std::this_thread::yield();
  return delivery.is_over();
}

// Throws instead of giving images from the given set on.
FrameSource failing_source(std::uint64_t first_failing_set) {
  FrameSource source = pixel_source();
  const auto image = source.image;
  source.image = [=](Frame::Type stream, std::uint64_t set) {
    if (set >= first_failing_set) throw std::runtime_error("the disk\nis gone");
    return image(stream, set);
  };
  return source;
}

class FaultyDelivery : public ::testing::TestWithParam<int> {
 protected:
  DeliverySettings settings_ = paced(GetParam());
  SyncMultiFrameListener listener_{kAllTypes};
};

INSTANTIATE_TEST_SUITE_P(Paces, FaultyDelivery, ::testing::Values(0, 120));

TEST_P(FaultyDelivery, GoesOnAfterLostFrames) {
  settings_.lost_percent = 30;
  const Delivery delivery(pixel_source(), settings_, both(listener_));
  bool mixed = false;
  std::uint32_t last = 0;
  for (int taken = 0; taken < 40; ++taken) {
    const std::set<std::uint32_t> sequences = next_sequences(listener_);
    ASSERT_FALSE(sequences.empty());
    EXPECT_GE(*sequences.rbegin(), last);
    last = *sequences.rbegin();
    mixed = mixed || sequences.size() > 1;
  }
  EXPECT_GE(last, 40U);
  EXPECT_TRUE(mixed);
}

// Counts the sets and takes each at the very frame that completes it, while the other frames of
// that frame's own set are still to come.
class EagerListener final : public FrameListener {
 public:
  bool onNewFrame(Frame::Type type, Frame* frame) override {
    sets_.onNewFrame(type, frame);
    if (sets_.hasNewFrame()) {
      FrameMap frames;
      sets_.waitForNewFrame(frames);
      sets_.release(frames);
      ++taken_;
    }
    return true;
  }

  bool takes(int count) const {
    const auto limit = std::chrono::steady_clock::now() + kPatience;
    while (taken_ < count && std::chrono::steady_clock::now() < limit) std::this_thread::yield();
    return taken_ >= count;
  }

 private:
  SyncMultiFrameListener sets_{kAllTypes};
  std::atomic<int> taken_ = 0;
};

TEST_P(FaultyDelivery, IsNotHeldUpByHalfASet) {
  settings_.lost_percent = 30;
  EagerListener listener;
  const Delivery delivery(pixel_source(), settings_, both(listener));
  EXPECT_TRUE(listener.takes(40));
}

TEST_P(FaultyDelivery, EndsAfterTheLastSetThoughEveryFrameIsLost) {
  settings_.lost_percent = 100;
  const Delivery delivery(pixel_source(5), settings_, both(listener_));
  EXPECT_TRUE(ends(delivery));
  EXPECT_FALSE(listener_.hasNewFrame());
}

TEST_P(FaultyDelivery, CanBeStoppedWhileNothingArrives) {
  settings_.lost_percent = 100;
  { const Delivery delivery(pixel_source(), settings_, both(listener_)); }
  EXPECT_FALSE(listener_.hasNewFrame());
}

TEST_P(FaultyDelivery, DamagesWhatItIsToldTo) {
  settings_.damaged_percent = 40;
  const Delivery delivery(pixel_source(), settings_, both(listener_));
  FrameMap frames;
  for (int taken = 0; taken < 40; ++taken) {
    ASSERT_TRUE(take_set(listener_, frames));
    for (const auto& [type, frame] : frames) {
      EXPECT_EQ(frame->status != 0, is_damaged(type, frame->sequence, 40));
    }
    listener_.release(frames);
  }
}

TEST_P(FaultyDelivery, NumbersRunOver) {
  settings_.first_sequence = 0U - 2U;
  settings_.first_timestamp = 0U - 100U;
  const Delivery delivery(pixel_source(), settings_, both(listener_));
  std::uint32_t sequence = 0U - 2U;
  while (sequence > 4) sequence = *next_sequences(listener_).rbegin();
  FrameMap frames;
  ASSERT_TRUE(take_set(listener_, frames));
  const Frame& frame = *frames.begin()->second;
  const std::uint32_t pace = GetParam() == 0 ? 30U : 120U;
  EXPECT_EQ(frame.timestamp, (frame.sequence + 2) * 8000 / pace - 100);
  listener_.release(frames);
}

TEST_P(FaultyDelivery, ResumesAfterAPause) {
  settings_.resumes = true;
  const Delivery delivery(pixel_source(2), settings_, both(listener_));
  std::uint32_t last = 0;
  std::uint32_t timestamp = 0;
  const auto start = std::chrono::steady_clock::now();
  while (last < 3) {
    FrameMap frames;
    ASSERT_TRUE(take_set(listener_, frames));
    last = frames.at(Frame::Ir)->sequence;
    timestamp = frames.at(Frame::Ir)->timestamp;
    listener_.release(frames);
  }
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(2500));
  EXPECT_EQ(last, 3U);
  EXPECT_EQ(timestamp, 2500U * 8 + 3 * 8000 / (GetParam() == 0 ? 30U : 120U));
  EXPECT_FALSE(delivery.is_over());
}

TEST_P(FaultyDelivery, EndsInAPause) {
  settings_.resumes = true;
  const Delivery delivery(pixel_source(1), settings_, both(listener_));
  next_sequences(listener_);
}

TEST_P(FaultyDelivery, IsOverAfterTheLastSet) {
  const Delivery delivery(pixel_source(2), settings_, both(listener_));
  EXPECT_FALSE(delivery.is_over());
  while (*next_sequences(listener_).rbegin() < 1) {
  }
  EXPECT_TRUE(ends(delivery));
}

TEST_P(FaultyDelivery, LateSetFollowsTheLast) {
  Delivery delivery(pixel_source(), settings_, both(listener_));
  const std::uint32_t taken = *next_sequences(listener_).rbegin();
  delivery.end_with_a_late_set();
  EXPECT_TRUE(listener_.hasNewFrame());
  EXPECT_GT(*next_sequences(listener_).begin(), taken);
  EXPECT_FALSE(listener_.hasNewFrame());
}

// The reader sees time-outs, and the program goes on.
TEST_P(FaultyDelivery, EndsLikeADeadSensorWhereTheSourceFails) {
  testing::internal::CaptureStderr();
  const Delivery delivery(failing_source(3), settings_, both(listener_));
  std::set<std::uint32_t> sequences = next_sequences(listener_);
  if (GetParam() == 0) {
    for (int set = 1; set < 3; ++set) sequences.merge(next_sequences(listener_));
  }
  EXPECT_TRUE(ends(delivery));
  if (listener_.hasNewFrame()) sequences.merge(next_sequences(listener_));
  EXPECT_FALSE(listener_.hasNewFrame());
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "virtual Kinect: no more frames arrive: the disk?is gone\n");
  EXPECT_LT(*sequences.rbegin(), 3U);
}

std::ptrdiff_t captured_lines() {
  const std::string said = testing::internal::GetCapturedStderr();
  return std::count(said.begin(), said.end(), '\n');
}

TEST_P(FaultyDelivery, DeadStreamsSendNoLateSet) {
  testing::internal::CaptureStderr();
  Delivery delivery(failing_source(0), settings_, both(listener_));
  EXPECT_TRUE(ends(delivery));
  delivery.end_with_a_late_set();
  EXPECT_FALSE(listener_.hasNewFrame());
  EXPECT_EQ(captured_lines(), 1);
}

TEST_P(FaultyDelivery, LateSetIsLeftOutWhereTheSourceFailsMeanwhile) {
  std::atomic<bool> failing = false;
  FrameSource source = pixel_source();
  const auto image = source.image;
  source.image = [&failing, image](Frame::Type stream, std::uint64_t set) {
    if (failing) throw std::bad_alloc();
    return image(stream, set);
  };
  FrameMap held;
  testing::internal::CaptureStderr();
  Delivery delivery(std::move(source), settings_, both(listener_));
  ASSERT_TRUE(take_set(listener_, held));
  failing = true;
  delivery.end_with_a_late_set();
  EXPECT_EQ(captured_lines(), 1);
  listener_.release(held);
}

// The listener is still full, and the reader holds a set.
TEST_P(FaultyDelivery, LateSetReplacesWhatNobodyTook) {
  FrameMap held;
  Delivery delivery(pixel_source(), settings_, both(listener_));
  ASSERT_TRUE(take_set(listener_, held));
  delivery.end_with_a_late_set();
  listener_.release(held);
  EXPECT_TRUE(listener_.hasNewFrame());
}

}  // namespace
}  // namespace halcyra::virtual_kinect
