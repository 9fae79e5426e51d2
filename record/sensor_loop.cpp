#include "record/sensor_loop.hpp"

#include <chrono>
#include <optional>

#include "app/stop_signal.hpp"
#include "capture/frame_set.hpp"
#include "record/set_copy.hpp"

namespace halcyra::record {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience(5);
constexpr std::chrono::seconds kCheckPeriod(1);

struct Times {
  std::optional<Clock::time_point> first_set;
  Clock::time_point last_set;
  Clock::time_point last_check;
};

// Copies the held set into the queue, or counts it as dropped.
void keep_set(const KinectSession& session, const RecordOptions& options, SetQueue& queue,
              TakenSets& taken, const Times& times) {
  RecordedSet* const place = queue.free_place();
  if (place == nullptr) {
    ++taken.dropped;
    return;
  }
  copy_set(session.frames, options.streams, *place);
  place->seconds = std::chrono::duration<double>(times.last_set - *times.first_set).count();
  queue.put(place);
  ++taken.kept;
}

bool time_is_up(const RecordOptions& options, const Times& times) {
  return options.seconds > 0 && times.first_set &&
         Clock::now() - *times.first_set >= std::chrono::seconds(options.seconds);
}

// Nothing while the recording goes on.
std::optional<EndReason> end_reason(const RecordOptions& options, const SetQueue& queue,
                                    const TakenSets& taken, const Times& times) {
  if (queue.failed()) return EndReason::kNoWriting;
  if (stop_requested()) return EndReason::kAsked;
  if (taken.kept >= options.sets || time_is_up(options, times)) return EndReason::kLimit;
  if (Clock::now() - times.last_set >= kPatience) return EndReason::kStalled;
  return std::nullopt;
}

void take_next(KinectSession& session, RuntimeStatus& status, const RecordOptions& options,
               SetQueue& queue, TakenSets& taken, Times& times) {
  if (!take_frame_set(session, status)) return;
  times.last_set = Clock::now();
  if (!times.first_set) times.first_set = times.last_set;
  taken.depth.see(session.frames.at(libfreenect2::Frame::Depth)->sequence);
  if (!time_is_up(options, times)) keep_set(session, options, queue, taken, times);
  release_frame_set(session);
}

}  // namespace

EndReason take_sets(KinectSession& session, RuntimeStatus& status, const RecordOptions& options,
                    SetQueue& queue, TakenSets& taken, const std::function<bool()>& may_go_on) {
  if (!session.streams_started) return EndReason::kStalled;
  Times times;
  times.last_set = times.last_check = Clock::now();
  while (true) {
    const std::optional<EndReason> reason = end_reason(options, queue, taken, times);
    if (reason) return *reason;
    take_next(session, status, options, queue, taken, times);
    if (Clock::now() - times.last_check >= kCheckPeriod) {
      times.last_check = Clock::now();
      if (!may_go_on()) return EndReason::kRefused;
    }
  }
}

}  // namespace halcyra::record
