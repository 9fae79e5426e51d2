// Takes sets from the running sensor until the recording ends.
#pragma once

#include <cstdint>
#include <functional>

#include "app/run_state/runtime_status.hpp"
#include "capture/kinect_session.hpp"
#include "record/record_options.hpp"
#include "record/sequence_gaps.hpp"
#include "record/set_queue.hpp"

namespace halcyra::record {

enum class EndReason {
  kAsked,      // a signal
  kLimit,      // of sets or seconds
  kStalled,    // no complete set for five seconds
  kRefused,    // the caller's check
  kNoWriting,  // the queue has failed
};

struct TakenSets {
  std::uint32_t kept = 0;  // put into the queue
  std::uint64_t dropped = 0;
  SequenceGaps depth;
};

// Takes each set of the session, copies it into the queue and releases it at once. A set that finds
// no place in the queue is dropped. Calls `may_go_on` about once a second, and ends when it returns
// false. A session whose streams do not run counts as stalled.
EndReason take_sets(KinectSession& session, RuntimeStatus& status, const RecordOptions& options,
                    SetQueue& queue, TakenSets& taken, const std::function<bool()>& may_go_on);

}  // namespace halcyra::record
