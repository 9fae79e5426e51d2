#include "record/set_queue.hpp"

#include <condition_variable>
#include <mutex>
#include <numeric>

#include <gtest/gtest.h>

namespace halcyra::record {
namespace {

void encode_nothing(RecordedSet&) {}

// Threads wait at it until it is opened.
class Gate {
 public:
  void open() {
    const std::lock_guard lock(mutex_);
    open_ = true;
    changed_.notify_all();
  }
  void pass() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return open_; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool open_ = false;
};

// Waits until one is free.
RecordedSet* next_place(SetQueue& queue) {
  RecordedSet* place = nullptr;
  while ((place = queue.free_place()) == nullptr) std::this_thread::yield();
  return place;
}

TEST(SetQueue, CommitsInOrderWhateverIsEncodedFirst) {
  Gate others_are_encoded;
  std::atomic<int> encoded{0};
  std::vector<std::uint32_t> committed;
  {
    SetQueue queue(
        4, 2,
        [&](RecordedSet& set) {
          if (set.number == 1) others_are_encoded.pass();
          if (++encoded == 3) others_are_encoded.open();
        },
        [&](const RecordedSet& set) {
          committed.push_back(set.number);
          return true;
        });
    for (int i = 0; i < 4; ++i) queue.put(next_place(queue));
    queue.finish();
  }
  EXPECT_EQ(committed, (std::vector<std::uint32_t>{1, 2, 3, 4}));
}

TEST(SetQueue, HasNoPlaceWhileAllAreTaken) {
  Gate gate;
  int committed = 0;
  SetQueue queue(
      3, 2, [&](RecordedSet&) { gate.pass(); },
      [&](const RecordedSet&) { return ++committed > 0; });
  for (int i = 0; i < 3; ++i) {
    RecordedSet* const place = queue.free_place();
    ASSERT_NE(place, nullptr);
    queue.put(place);
  }
  EXPECT_EQ(queue.free_place(), nullptr);
  gate.open();
  EXPECT_NE(next_place(queue), nullptr);
  queue.finish();
  EXPECT_EQ(committed, 3);
}

TEST(SetQueue, UsesTheMemoryOfAPlaceAgain) {
  SetQueue queue(4, 1, encode_nothing, [](const RecordedSet&) { return true; });
  RecordedSet* const place = queue.free_place();
  place->frames[kColor].pixels.create(10, 10, CV_8UC4);
  const unsigned char* const memory = place->frames[kColor].pixels.data;
  queue.put(place);
  queue.finish();
  EXPECT_EQ(queue.free_place(), place);
  EXPECT_EQ(place->frames[kColor].pixels.data, memory);
}

TEST(SetQueue, CommitsNoMoreAfterAFailure) {
  std::vector<std::uint32_t> tried;
  SetQueue queue(8, 2, encode_nothing, [&](const RecordedSet& set) {
    tried.push_back(set.number);
    return set.number < 3;
  });
  for (int i = 0; i < 20; ++i) queue.put(next_place(queue));
  queue.finish();
  EXPECT_TRUE(queue.failed());
  EXPECT_EQ(tried, (std::vector<std::uint32_t>{1, 2, 3}));
}

TEST(SetQueue, FinishesWithoutAnySet) {
  SetQueue queue(2, 3, encode_nothing, [](const RecordedSet&) { return true; });
  queue.finish();
  queue.finish();
  EXPECT_FALSE(queue.failed());
}

// Many sets through few places; each must keep what was put in with it.
TEST(SetQueue, NeverMixesSets) {
  constexpr std::uint32_t kSets = 3000;
  std::vector<std::uint32_t> committed;
  SetQueue queue(
      3, 4,
      [](RecordedSet& set) {
        set.files[kColor].bytes.assign(1, static_cast<unsigned char>(set.frames[kColor].sequence));
      },
      [&](const RecordedSet& set) {
        committed.push_back(set.number);
        return set.frames[kColor].sequence == set.number &&
               set.files[kColor].bytes[0] == static_cast<unsigned char>(set.number);
      });
  for (std::uint32_t i = 1; i <= kSets; ++i) {
    RecordedSet* const place = next_place(queue);
    place->frames[kColor].sequence = i;
    queue.put(place);
  }
  queue.finish();
  EXPECT_FALSE(queue.failed());
  std::vector<std::uint32_t> all(kSets);
  std::iota(all.begin(), all.end(), 1U);
  EXPECT_EQ(committed, all);
}

}  // namespace
}  // namespace halcyra::record
