#include "record/set_queue.hpp"

#include <sys/resource.h>

#include <utility>

namespace halcyra::record {
namespace {

// Encoding takes what processor time the driver leaves. On Linux this is the priority of the
// calling thread alone; if it cannot be set, the thread goes on with the usual one.
void give_way() {
  constexpr int kNice = 10;
  static_cast<void>(setpriority(PRIO_PROCESS, 0, kNice));
}

}  // namespace

SetQueue::SetQueue(std::size_t places, std::size_t encoders, Encode encode, Commit commit)
    : encode_(std::move(encode)), commit_(std::move(commit)), places_(places) {
  for (RecordedSet& place : places_) free_.push_back(&place);
  for (std::size_t i = 0; i < encoders; ++i) threads_.emplace_back([this] { encode_sets(); });
  threads_.emplace_back([this] { commit_sets(); });
}

SetQueue::~SetQueue() { finish(); }

RecordedSet* SetQueue::free_place() {
  const std::lock_guard lock(mutex_);
  if (free_.empty()) return nullptr;
  RecordedSet* const place = free_.back();
  free_.pop_back();
  return place;
}

void SetQueue::put(RecordedSet* set) {
  const std::lock_guard lock(mutex_);
  set->number = ++put_in_;
  waiting_.push_back(set);
  changed_.notify_all();
}

void SetQueue::finish() {
  {
    const std::lock_guard lock(mutex_);
    finishing_ = true;
    changed_.notify_all();
  }
  for (std::thread& thread : threads_) {
    if (thread.joinable()) thread.join();
  }
}

bool SetQueue::failed() const {
  const std::lock_guard lock(mutex_);
  return failed_;
}

void SetQueue::encode_sets() {
  give_way();
  while (RecordedSet* const set = next_to_encode()) {
    encode_(*set);
    const std::lock_guard lock(mutex_);
    encoded_.emplace(set->number, set);
    changed_.notify_all();
  }
}

void SetQueue::commit_sets() {
  while (RecordedSet* const set = next_to_commit()) settle(set, !failed() && commit_(*set));
}

// Null at the end.
RecordedSet* SetQueue::next_to_encode() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return finishing_ || !waiting_.empty(); });
  if (waiting_.empty()) return nullptr;
  RecordedSet* const set = waiting_.front();
  waiting_.pop_front();
  return set;
}

// Null at the end.
RecordedSet* SetQueue::next_to_commit() {
  std::unique_lock lock(mutex_);
  const auto next_is_encoded = [this] {
    return !encoded_.empty() && encoded_.begin()->first == settled_ + 1;
  };
  changed_.wait(lock, [&] { return next_is_encoded() || (finishing_ && settled_ == put_in_); });
  if (encoded_.empty()) return nullptr;
  RecordedSet* const set = encoded_.begin()->second;
  encoded_.erase(encoded_.begin());
  return set;
}

void SetQueue::settle(RecordedSet* set, bool committed) {
  const std::lock_guard lock(mutex_);
  ++settled_;
  failed_ = failed_ || !committed;
  free_.push_back(set);
}

}  // namespace halcyra::record
