#include "virtual_kinect/delivery.hpp"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <future>
#include <iterator>
#include <mutex>
#include <optional>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <libfreenect2/frame_listener_impl.h>

#include "tests/virtual_kinect/take_set.hpp"

namespace halcyra::virtual_kinect {
namespace {

using Clock = std::chrono::steady_clock;
using libfreenect2::Frame;
using libfreenect2::FrameListener;
using libfreenect2::FrameMap;
using libfreenect2::SyncMultiFrameListener;

constexpr unsigned int kAllTypes = Frame::Color | Frame::Ir | Frame::Depth;

// The sets that a source was asked for, and a way to wait for them.
class Requests {
 public:
  void add(std::uint64_t set) {
    const std::lock_guard lock(mutex_);
    if (sets_.empty() || sets_.back() != set) sets_.push_back(set);
    changed_.notify_all();
  }

  // The sets that were asked for, in that order, once there are `count` of them.
  std::vector<std::uint64_t> wait_for(std::size_t count) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, kPatience, [&] { return sets_.size() >= count; });
    return sets_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::uint64_t> sets_;
};

// Every stream's one pixel is the set's number.
FrameSource numbered_source(Requests& requests,
                            std::optional<std::uint64_t> set_count = std::nullopt) {
  FrameSource source;
  source.streams = {Frame::Color, Frame::Ir, Frame::Depth};
  source.set_count = set_count;
  source.image = [&requests](Frame::Type, std::uint64_t set) {
    requests.add(set);
    return StreamImage{cv::Mat(1, 1, CV_32FC1, cv::Scalar(static_cast<double>(set))),
                       cv::Size(1, 1), 4, Frame::Float};
  };
  return source;
}

Listeners both(FrameListener& listener) { return {&listener, &listener}; }

// Takes every frame and keeps it until it is told to drop it.
class KeepingListener final : public FrameListener {
 public:
  ~KeepingListener() override { drop_all(); }

  bool onNewFrame(Frame::Type type, Frame* frame) override {
    const std::lock_guard lock(mutex_);
    arrivals_.push_back({type, frame->sequence, frame->timestamp, Clock::now(), kept_.size()});
    kept_.push_back(frame);
    changed_.notify_all();
    return true;
  }

  struct Arrival {
    Frame::Type type;
    std::uint32_t sequence;
    std::uint32_t timestamp;
    Clock::time_point time;
    std::size_t kept_before;  // frames not yet dropped at that moment
  };

  std::vector<Arrival> wait_for(std::size_t count) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, kPatience, [&] { return arrivals_.size() >= count; });
    return arrivals_;
  }

  std::size_t arrived() {
    const std::lock_guard lock(mutex_);
    return arrivals_.size();
  }

  // Deletes a kept frame, the oldest or the newest. It counts as dropped before it is deleted.
  void drop_one(bool newest) {
    const Frame* frame = nullptr;
    {
      const std::lock_guard lock(mutex_);
      const auto place = newest ? std::prev(kept_.end()) : kept_.begin();
      frame = *place;
      kept_.erase(place);
    }
    delete frame;
  }

  void drop_all() {
    while (has_kept()) drop_one(false);
  }

 private:
  bool has_kept() {
    const std::lock_guard lock(mutex_);
    return !kept_.empty();
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<Arrival> arrivals_;
  std::vector<Frame*> kept_;
};

class RefusingListener final : public FrameListener {
 public:
  bool onNewFrame(Frame::Type, Frame* frame) override {
    last_ = frame->sequence;
    return false;
  }

  bool wait_for(std::uint32_t sequence) const {
    const auto limit = Clock::now() + kPatience;
    while (last_ < sequence && Clock::now() < limit) std::this_thread::yield();
    return last_ >= sequence;
  }

 private:
  std::atomic<std::uint32_t> last_ = 0;
};

float pixel(const FrameMap& frames, Frame::Type type) {
  return *reinterpret_cast<const float*>(frames.at(type)->data);
}

TEST(LockstepDelivery, ASlowReaderSeesEverySetInOrder) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  const Delivery delivery(numbered_source(requests), {0}, both(listener));
  FrameMap frames;
  for (std::uint32_t set = 0; set < 200; ++set) {
    ASSERT_TRUE(take_set(listener, frames));
    std::this_thread::sleep_for(std::chrono::microseconds(200));
    for (const Frame::Type type : {Frame::Color, Frame::Ir, Frame::Depth}) {
      ASSERT_EQ(frames.at(type)->sequence, set);
      ASSERT_EQ(pixel(frames, type), static_cast<float>(set));
    }
    listener.release(frames);
  }
}

TEST(LockstepDelivery, ASetThatNobodyTakesWaitsToo) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  const Delivery delivery(numbered_source(requests), {0}, both(listener));
  FrameMap frames;
  for (std::uint32_t set = 0; set < 20; ++set) {
    // The set waits in the listener while the next one is made.
    EXPECT_EQ(requests.wait_for(set + 2).size(), set + 2);
    ASSERT_TRUE(take_set(listener, frames));
    EXPECT_EQ(frames.at(Frame::Color)->sequence, set);
    listener.release(frames);
  }
}

TEST(LockstepDelivery, TheNextSetComesWhenEveryFrameOfTheOneBeforeIsDeleted) {
  Requests requests;
  KeepingListener listener;
  const Delivery delivery(numbered_source(requests), {0}, both(listener));
  for (std::size_t set = 0; set < 50; ++set) {
    ASSERT_EQ(listener.wait_for(3 * set + 3).size(), 3 * set + 3);
    for (int frame = 0; frame < 3; ++frame) {
      EXPECT_EQ(listener.arrived(), 3 * set + 3);
      listener.drop_one(set % 2 == 0);
      std::this_thread::yield();
    }
  }
  for (const KeepingListener::Arrival& arrival : listener.wait_for(153)) {
    if (arrival.type == Frame::Color) {
      EXPECT_EQ(arrival.kept_before, 0U) << "set " << arrival.sequence;
    }
  }
}

TEST(LockstepDelivery, TheNextSetIsMadeWhileTheOneBeforeIsHeld) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  const Delivery delivery(numbered_source(requests), {0}, both(listener));
  FrameMap frames;
  ASSERT_TRUE(take_set(listener, frames));
  EXPECT_EQ(requests.wait_for(2), std::vector<std::uint64_t>({0, 1}));
  listener.release(frames);
}

TEST(LockstepDelivery, RefusedFramesAreReleased) {
  Requests requests;
  RefusingListener listener;
  const Delivery delivery(numbered_source(requests), {0}, both(listener));
  EXPECT_TRUE(listener.wait_for(10));
}

TEST(LockstepDelivery, PartlyRefusedSetsWaitForTheRest) {
  Requests requests;
  SyncMultiFrameListener listener(Frame::Depth);
  const Delivery delivery(numbered_source(requests), {0}, both(listener));
  FrameMap frames;
  for (std::uint32_t set = 0; set < 50; ++set) {
    ASSERT_TRUE(take_set(listener, frames));
    ASSERT_EQ(frames.at(Frame::Depth)->sequence, set);
    listener.release(frames);
  }
}

TEST(LockstepDelivery, WaitsForAListener) {
  Requests requests;
  Delivery delivery(numbered_source(requests), {0}, Listeners());
  for (int times = 0; times < 1000; ++times) {
    EXPECT_EQ(requests.wait_for(1), std::vector<std::uint64_t>({0}));
    std::this_thread::yield();
  }
  KeepingListener listener;
  delivery.set_listeners({nullptr, &listener});
  const std::vector<KeepingListener::Arrival> arrivals = listener.wait_for(2);
  ASSERT_EQ(arrivals.size(), 2U);
  EXPECT_EQ(arrivals[0].type, Frame::Ir);
  EXPECT_EQ(arrivals[0].sequence, 0U);
  EXPECT_EQ(arrivals[1].type, Frame::Depth);
  delivery.set_listeners(Listeners());
}

TEST(LockstepDelivery, TimeStampsCountAThirtiethOfASecondEach) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  const Delivery delivery(numbered_source(requests), {0}, both(listener));
  FrameMap frames;
  for (std::uint32_t set = 0; set < 5; ++set) {
    ASSERT_TRUE(take_set(listener, frames));
    for (const auto& [type, frame] : frames) EXPECT_EQ(frame->timestamp, set * 8000 / 30);
    listener.release(frames);
  }
}

TEST(LockstepDelivery, EndsWithTheLastSet) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  FrameMap frames;
  {
    const Delivery delivery(numbered_source(requests, 2), {0}, both(listener));
    for (int set = 0; set < 2; ++set) {
      ASSERT_TRUE(take_set(listener, frames));
      listener.release(frames);
    }
  }
  EXPECT_FALSE(listener.hasNewFrame());
  EXPECT_EQ(requests.wait_for(2), std::vector<std::uint64_t>({0, 1}));
}

TEST(LockstepDelivery, EndsWhileASetIsHeld) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  FrameMap frames;
  {
    const Delivery delivery(numbered_source(requests), {0}, both(listener));
    ASSERT_TRUE(take_set(listener, frames));
  }
  EXPECT_EQ(pixel(frames, Frame::Ir), 0.0F);
  listener.release(frames);
}

TEST(LockstepDelivery, EndsWhileTheListenerIsFull) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  {
    const Delivery delivery(numbered_source(requests), {0}, both(listener));
    requests.wait_for(2);
  }
  EXPECT_TRUE(listener.hasNewFrame());
}

TEST(LockstepDelivery, EndsWithoutAListener) {
  Requests requests;
  { const Delivery delivery(numbered_source(requests), {0}, Listeners()); }
  { const Delivery delivery(numbered_source(requests), {120}, Listeners()); }
}

TEST(RealTimeDelivery, ASetThatNobodyTookIsReplaced) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  const Delivery delivery(numbered_source(requests), {120}, both(listener));
  // When the third is being made, two have been delivered.
  ASSERT_GE(requests.wait_for(3).size(), 3U);
  FrameMap frames;
  ASSERT_TRUE(take_set(listener, frames));
  for (const auto& [type, frame] : frames) {
    EXPECT_GE(frame->sequence, 1U);
    EXPECT_EQ(pixel(frames, type), static_cast<float>(frame->sequence));
  }
  listener.release(frames);
}

// Gives memory as OpenCV does, and tells when some is given back.
class TellingAllocator final : public cv::MatAllocator {
 public:
  explicit TellingAllocator(std::function<void()> tell) : tell_(std::move(tell)) {}

  cv::UMatData* allocate(int dims, const int* sizes, int type, void* data, std::size_t* step,
                         cv::AccessFlag flags, cv::UMatUsageFlags usage) const override {
    cv::UMatData* const memory =
        cv::Mat::getStdAllocator()->allocate(dims, sizes, type, data, step, flags, usage);
    memory->prevAllocator = memory->currAllocator = this;
    return memory;
  }
  bool allocate(cv::UMatData* /*data*/, cv::AccessFlag /*flags*/,
                cv::UMatUsageFlags /*usage*/) const override {
    return false;
  }
  void deallocate(cv::UMatData* memory) const override {
    tell_();
    cv::Mat::getStdAllocator()->deallocate(memory);
  }

 private:
  std::function<void()> tell_;
};

// A reader may come at any moment. This one comes while the first frame of a set that nobody took
// is deleted.
TEST(RealTimeDelivery, NobodyGetsAPartOfASetWithFramesOfTheOneBefore) {
  std::optional<SyncMultiFrameListener> listener(kAllTypes);
  std::promise<std::set<std::uint32_t>> sequences;
  std::atomic<bool> has_come = false;
  TellingAllocator allocator([&] {
    if (has_come || !listener->hasNewFrame() || has_come.exchange(true)) return;
    FrameMap frames;
    listener->waitForNewFrame(frames);
    std::set<std::uint32_t> found;
    for (const auto& [type, frame] : frames) found.insert(frame->sequence);
    listener->release(frames);
    sequences.set_value(found);
  });
  FrameSource source;
  source.streams = {Frame::Color, Frame::Ir, Frame::Depth};
  source.image = [&allocator](Frame::Type, std::uint64_t) {
    StreamImage image{{}, cv::Size(1, 1), 4, Frame::Float, true};
    image.pixels.allocator = &allocator;
    image.pixels.create(1, 1, CV_32FC1);
    return image;
  };
  {
    const Delivery delivery(source, {120}, both(*listener));
    std::future<std::set<std::uint32_t>> found = sequences.get_future();
    ASSERT_EQ(found.wait_for(kPatience), std::future_status::ready);
    EXPECT_EQ(found.get().size(), 1U);
  }
  listener.reset();  // its frames need the allocator
}

TEST(RealTimeDelivery, GoesOnWhileASetIsHeld) {
  Requests requests;
  KeepingListener listener;
  const Delivery delivery(numbered_source(requests), {120}, both(listener));
  const std::vector<KeepingListener::Arrival> arrivals = listener.wait_for(12);
  ASSERT_GE(arrivals.size(), 12U);
  for (std::size_t i = 3; i < arrivals.size(); ++i) {
    EXPECT_GT(arrivals[i].sequence, arrivals[i - 3].sequence);
    EXPECT_EQ(arrivals[i].type, arrivals[i - 3].type);
  }
}

TEST(RealTimeDelivery, NoSetComesBeforeItIsDue) {
  Requests requests;
  KeepingListener listener;
  const Clock::time_point start = Clock::now();
  const Delivery delivery(numbered_source(requests), {100}, both(listener));
  const std::vector<KeepingListener::Arrival> arrivals = listener.wait_for(30);
  ASSERT_GE(arrivals.size(), 30U);
  EXPECT_EQ(arrivals[0].sequence, 0U);
  for (const KeepingListener::Arrival& arrival : arrivals) {
    EXPECT_GE(arrival.time - start, std::chrono::milliseconds(10) * arrival.sequence);
  }
}

TEST(RealTimeDelivery, TimeStampsFollowThePace) {
  for (const int pace : {7, 120}) {
    Requests requests;
    KeepingListener listener;
    const Delivery delivery(numbered_source(requests), {pace}, both(listener));
    for (const KeepingListener::Arrival& arrival : listener.wait_for(6)) {
      EXPECT_EQ(arrival.timestamp, arrival.sequence * 8000 / static_cast<std::uint32_t>(pace));
    }
  }
}

// Spends as much time on the first frame as twelve sets take at 120 per second.
class SlowListener final : public FrameListener {
 public:
  bool onNewFrame(Frame::Type /*type*/, Frame* frame) override {
    if (frame->sequence == 0) std::this_thread::sleep_for(std::chrono::milliseconds(100));
    return false;
  }
};

TEST(RealTimeDelivery, PassesOverSetsWhoseTimeIsGone) {
  Requests requests;
  SlowListener listener;
  const Delivery delivery(numbered_source(requests), {120}, {&listener, nullptr});
  const std::vector<std::uint64_t> sets = requests.wait_for(2);
  ASSERT_GE(sets.size(), 2U);
  EXPECT_EQ(sets[0], 0U);
  EXPECT_GE(sets[1], 12U);
}

TEST(RealTimeDelivery, TheLastSetIsNeverPassedOver) {
  Requests requests;
  SlowListener listener;
  const Delivery delivery(numbered_source(requests, 5), {120}, {&listener, nullptr});
  EXPECT_EQ(requests.wait_for(2), std::vector<std::uint64_t>({0, 4}));
}

TEST(RealTimeDelivery, EndsWhileTheListenerIsFull) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  {
    const Delivery delivery(numbered_source(requests), {1}, both(listener));
    requests.wait_for(2);  // the next set is due in a second
  }
  EXPECT_TRUE(listener.hasNewFrame());
}

TEST(RealTimeDelivery, FramesOutliveIt) {
  Requests requests;
  KeepingListener listener;
  {
    const Delivery delivery(numbered_source(requests), {120}, both(listener));
    listener.wait_for(3);
  }
  listener.drop_all();
}

FrameSource demanded_source(Requests& requests) {
  FrameSource source = numbered_source(requests);
  source.made_on_demand = true;
  return source;
}

// One set is made ahead; another one for each quarter of a second that nobody takes any.
std::size_t most_sets_made(std::size_t taken, Clock::duration elapsed) {
  return taken + 2 + static_cast<std::size_t>(elapsed / std::chrono::milliseconds(250));
}

TEST(OnDemandDelivery, MakesOnlyWhatIsTaken) {
  constexpr std::size_t kTaken = 10;
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  const Clock::time_point start = Clock::now();
  const Delivery delivery(demanded_source(requests), {120}, both(listener));
  FrameMap frames;
  for (std::size_t i = 0; i < kTaken; ++i) {
    ASSERT_TRUE(take_set(listener, frames));
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    listener.release(frames);
  }
  EXPECT_LE(requests.wait_for(0).size(), most_sets_made(kTaken, Clock::now() - start));
}

TEST(OnDemandDelivery, MakesTheNextSetWhileTheOneBeforeIsHeld) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  const Delivery delivery(demanded_source(requests), {120}, both(listener));
  FrameMap frames;
  ASSERT_TRUE(take_set(listener, frames));
  const std::uint32_t first = frames.at(Frame::Color)->sequence;
  const std::size_t made = requests.wait_for(2).size();
  EXPECT_GE(made, 2U);
  listener.release(frames);
  ASSERT_TRUE(take_set(listener, frames));
  EXPECT_GT(frames.at(Frame::Color)->sequence, first);
  listener.release(frames);
}

TEST(OnDemandDelivery, PassesOverSetsWhoseTimeIsGone) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  const Delivery delivery(demanded_source(requests), {120}, both(listener));
  FrameMap frames;
  ASSERT_TRUE(take_set(listener, frames));
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  listener.release(frames);
  ASSERT_TRUE(take_set(listener, frames));  // made while the first was held
  listener.release(frames);
  ASSERT_TRUE(take_set(listener, frames));
  EXPECT_GE(frames.at(Frame::Color)->sequence, 12U);  // due after the 100 ms
  listener.release(frames);
}

TEST(OnDemandDelivery, ASetThatNobodyTookIsReplaced) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  const Delivery delivery(demanded_source(requests), {120}, both(listener));
  // When the third is being made, two have been delivered.
  ASSERT_GE(requests.wait_for(3).size(), 3U);
  FrameMap frames;
  ASSERT_TRUE(take_set(listener, frames));
  EXPECT_GE(frames.at(Frame::Color)->sequence, 1U);
  listener.release(frames);
}

TEST(OnDemandDelivery, GoesOnWhileASetIsHeld) {
  Requests requests;
  KeepingListener listener;
  const Delivery delivery(demanded_source(requests), {120}, both(listener));
  EXPECT_GE(listener.wait_for(9).size(), 9U);
}

TEST(OnDemandDelivery, EndsWhileASetIsHeld) {
  Requests requests;
  KeepingListener listener;
  {
    const Delivery delivery(demanded_source(requests), {120}, both(listener));
    listener.wait_for(3);
  }
  listener.drop_all();
}

TEST(OnDemandDelivery, NoSetComesBeforeItIsDue) {
  Requests requests;
  SyncMultiFrameListener listener(kAllTypes);
  const Clock::time_point start = Clock::now();
  const Delivery delivery(demanded_source(requests), {50}, both(listener));
  FrameMap frames;
  for (int i = 0; i < 10; ++i) {
    ASSERT_TRUE(take_set(listener, frames));
    EXPECT_GE(Clock::now() - start,
              std::chrono::milliseconds(20) * frames.at(Frame::Color)->sequence);
    listener.release(frames);
  }
}

TEST(Delivery, EachStreamGoesToItsListener) {
  for (const int pace : {0, 120}) {
    Requests requests;
    KeepingListener color;
    KeepingListener ir_and_depth;
    const Delivery delivery(numbered_source(requests), {pace}, {&color, &ir_and_depth});
    EXPECT_EQ(color.wait_for(1)[0].type, Frame::Color);
    std::set<Frame::Type> types;
    for (const KeepingListener::Arrival& arrival : ir_and_depth.wait_for(2)) {
      types.insert(arrival.type);
    }
    EXPECT_EQ(types, std::set<Frame::Type>({Frame::Ir, Frame::Depth}));
  }
}

TEST(Delivery, ASourceWithoutStreamsDeliversNothing) {
  for (const int pace : {0, 120}) {
    KeepingListener listener;
    { const Delivery delivery(FrameSource(), {pace}, both(listener)); }
    EXPECT_EQ(listener.arrived(), 0U);
  }
}

}  // namespace
}  // namespace halcyra::virtual_kinect
