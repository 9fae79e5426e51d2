// The sets between the thread that takes them from the sensor and the disk.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "record/recorded_set.hpp"

namespace halcyra::record {

// A fixed number of places for sets, whose memory is used again. Several threads encode; one more
// commits the encoded sets in the order in which they were put in. All functions are for the one
// thread that fills the queue.
class SetQueue {
 public:
  using Encode = std::function<void(RecordedSet& set)>;        // on several threads at once
  using Commit = std::function<bool(const RecordedSet& set)>;  // false: commit no more

  // Neither function may throw. They are called until `finish` has returned.
  SetQueue(std::size_t places, std::size_t encoders, Encode encode, Commit commit);
  ~SetQueue();
  SetQueue(const SetQueue&) = delete;
  SetQueue& operator=(const SetQueue&) = delete;

  // A place to fill and put in, with what an earlier set has left there. Null while all places are
  // taken; never waits.
  RecordedSet* free_place();

  // Puts the filled place in, numbered by the order of these calls.
  void put(RecordedSet* set);

  // Waits until every set that was put in is committed, and ends the threads. Put none in after it.
  void finish();

  // True once a commit has failed. Sets after the failed one are thrown away.
  bool failed() const;

 private:
  void encode_sets();
  void commit_sets();
  RecordedSet* next_to_encode();
  RecordedSet* next_to_commit();
  void settle(RecordedSet* set, bool committed);

  const Encode encode_;
  const Commit commit_;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<RecordedSet> places_;
  std::vector<RecordedSet*> free_;  // the place freed last is used next, so few are ever touched
  std::deque<RecordedSet*> waiting_;
  std::map<std::uint32_t, RecordedSet*> encoded_;  // by number
  std::uint32_t put_in_ = 0;
  std::uint32_t settled_ = 0;  // committed or thrown away
  bool finishing_ = false;
  bool failed_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace halcyra::record
