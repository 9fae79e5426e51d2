#include "virtual_kinect/delivery.hpp"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <string>
#include <typeinfo>

#include "virtual_kinect/complaint.hpp"
#include "virtual_kinect/delivered_frame.hpp"
#include "virtual_kinect/frame_faults.hpp"

namespace halcyra::virtual_kinect {

namespace {

using libfreenect2::Frame;
using libfreenect2::FrameListener;
using libfreenect2::SyncMultiFrameListener;

constexpr int kSensorPace = 30;  // also the pace that the time stamps of pace 0 follow
constexpr std::uint64_t kTicksPerSecond = 8000;
constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;
constexpr std::chrono::nanoseconds kFrameTime(kNanosecondsPerSecond / kSensorPace);

// After this time, a set made on demand that nobody takes is replaced.
constexpr std::chrono::milliseconds kStaleAfter(250);

// Long enough to be noticed by a reader that waits for one second at a time.
constexpr std::chrono::milliseconds kPause(2500);
constexpr std::uint64_t kPauseTicks = kPause.count() * kTicksPerSecond / 1000;

}  // namespace

// Shared with the frames, which may outlive the delivery. Its mutex is never held while a listener
// is called or a frame deleted.
struct Delivery::Shared {
  std::mutex mutex;
  std::condition_variable changed;
  bool ended = false;
  std::optional<std::uint64_t> held_set;  // the set delivered last, while its frames exist
  Listeners listeners;

  bool is_heard() const { return listeners.color != nullptr || listeners.ir_and_depth != nullptr; }
};

// The frames of one set share this. When the last of them is deleted, the next set may go out.
class Delivery::SetHold {
 public:
  SetHold(std::shared_ptr<Shared> shared, std::uint64_t set)
      : shared_(std::move(shared)), set_(set) {}
  ~SetHold() {
    const std::lock_guard lock(shared_->mutex);
    if (shared_->held_set == set_) shared_->held_set.reset();
    shared_->changed.notify_all();
  }
  SetHold(const SetHold&) = delete;
  SetHold& operator=(const SetHold&) = delete;

 private:
  const std::shared_ptr<Shared> shared_;
  const std::uint64_t set_;
};

Delivery::Delivery(FrameSource source, const DeliverySettings& settings, const Listeners& listeners)
    : source_(std::move(source)), settings_(settings), shared_(std::make_shared<Shared>()) {
  shared_->listeners = listeners;
  if (!source_.streams.empty()) {
    thread_ = std::thread([this] { deliver([this] { play(); }); });
  }
}

Delivery::~Delivery() { end(); }

void Delivery::end() {
  {
    const std::lock_guard lock(shared_->mutex);
    shared_->ended = true;
    shared_->changed.notify_all();
  }
  if (thread_.joinable()) thread_.join();
}

void Delivery::end_with_a_late_set() {
  end();
  if (died_) return;
  deliver([this] {
    std::vector<PreparedFrame> frames = prepare(next_set_);
    hand_out(frames);
  });
}

void Delivery::set_listeners(const Listeners& listeners) {
  const std::lock_guard lock(shared_->mutex);
  shared_->listeners = listeners;
  shared_->changed.notify_all();
}

void Delivery::deliver(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& error) {
    complain(std::string("no more frames arrive: ") + error.what());
    died_ = true;
    is_over_ = true;
  }
}

void Delivery::play() {
  while (play_once()) {
    if (!settings_.resumes) {
      is_over_ = true;
      return;
    }
    if (!rest(kPause)) return;
    first_set_ = next_set_;
    ++pauses_;
  }
}

// Delivers all sets once. A set is decoded before it is due, while the program still works on the
// one before. False when the delivery has ended.
bool Delivery::play_once() {
  std::uint64_t set = first_set_;
  while (!source_.set_count || set < first_set_ + *source_.set_count) {
    std::vector<PreparedFrame> frames = prepare(set);
    if (set == first_set_) first_due_ = Clock::now();
    if (!wait_for_turn(set)) return false;
    hand_out(frames);
    next_set_ = set + 1;
    if (needs_a_rest(set) && !rest(kFrameTime)) return false;
    set = set_after(set);
  }
  return true;
}

bool Delivery::has_all_frames(std::uint64_t set) const {
  return std::none_of(source_.streams.begin(), source_.streams.end(), [&](Frame::Type stream) {
    return is_lost(stream, set, settings_.lost_percent);
  });
}

// With pace 0 the release of a set makes room for the next. Nobody may ever release a set that lost
// a frame, so a pause takes the place of its release.
bool Delivery::needs_a_rest(std::uint64_t set) const {
  return settings_.pace == 0 && !has_all_frames(set);
}

std::unique_ptr<Frame> Delivery::make_frame_of_set(
    Frame::Type stream, std::uint64_t set, const std::shared_ptr<const SetHold>& hold) const {
  auto frame = make_frame(source_.image(stream, set), hold);
  frame->sequence = settings_.first_sequence + static_cast<std::uint32_t>(set);
  frame->timestamp = timestamp_of(set);
  if (is_damaged(stream, set, settings_.damaged_percent)) damage(*frame, set);
  return frame;
}

// Whether the next set waits until this one has been released.
bool Delivery::is_held(std::uint64_t set) const {
  return (settings_.pace == 0 || source_.made_on_demand) && has_all_frames(set);
}

std::vector<Delivery::PreparedFrame> Delivery::prepare(std::uint64_t set) const {
  const std::shared_ptr<const SetHold> hold =
      is_held(set) ? std::make_shared<const SetHold>(shared_, set) : nullptr;
  std::vector<PreparedFrame> frames;
  for (const Frame::Type stream : source_.streams) {
    if (!is_lost(stream, set, settings_.lost_percent)) {
      frames.emplace_back(stream, make_frame_of_set(stream, set, hold));
    }
  }
  return frames;
}

std::uint32_t Delivery::timestamp_of(std::uint64_t set) const {
  const auto pace = static_cast<std::uint64_t>(settings_.pace == 0 ? kSensorPace : settings_.pace);
  const std::uint64_t ticks = set * kTicksPerSecond / pace + pauses_ * kPauseTicks;
  return settings_.first_timestamp + static_cast<std::uint32_t>(ticks);
}

// False when the delivery ended meanwhile.
bool Delivery::rest(std::chrono::nanoseconds duration) {
  std::unique_lock lock(shared_->mutex);
  return !shared_->changed.wait_for(lock, duration, [this] { return shared_->ended; });
}

// Likewise.
bool Delivery::wait_for_turn(std::uint64_t set) {
  std::unique_lock lock(shared_->mutex);
  if (settings_.pace > 0) {
    shared_->changed.wait_until(lock, due(set), [this] { return shared_->ended; });
  }
  wait_for_release(lock);
  shared_->held_set = is_held(set) ? std::optional(set) : std::nullopt;
  return !shared_->ended;
}

void Delivery::wait_for_release(std::unique_lock<std::mutex>& lock) const {
  const auto is_free = [this] {
    return shared_->ended || (!shared_->held_set && shared_->is_heard());
  };
  if (settings_.pace > 0) {
    if (!source_.made_on_demand) return;
    shared_->changed.wait_for(lock, kStaleAfter, is_free);
  } else if (settings_.lost_percent == 0) {
    shared_->changed.wait(lock, is_free);
  } else {
    // The reader may have used one frame of the last set to complete an earlier one. It then holds
    // the others until a frame of this set completes them too.
    shared_->changed.wait_for(lock, kFrameTime, is_free);
  }
}

// Null unless one listener takes whole sets. A class derived from it may have an onNewFrame of its
// own, which has to be called.
SyncMultiFrameListener* Delivery::taker_of_sets() const {
  const std::lock_guard lock(shared_->mutex);
  FrameListener* const listener = shared_->listeners.color;
  if (listener == nullptr || listener != shared_->listeners.ir_and_depth) return nullptr;
  if (typeid(*listener) != typeid(SyncMultiFrameListener)) return nullptr;
  return static_cast<SyncMultiFrameListener*>(listener);
}

// Frames that a listener refuses stay in `frames`.
void Delivery::hand_out(std::vector<PreparedFrame>& frames) {
  if (SyncMultiFrameListener* const taker = taker_of_sets()) {
    libfreenect2::FrameMap set;
    for (auto& [stream, frame] : frames) set[stream] = frame.release();
    taker->onNewSet(set);
    return;
  }
  for (auto& [stream, frame] : frames) {
    FrameListener* listener = nullptr;
    {
      const std::lock_guard lock(shared_->mutex);
      listener =
          stream == Frame::Color ? shared_->listeners.color : shared_->listeners.ir_and_depth;
    }
    if (listener != nullptr && listener->onNewFrame(stream, frame.get())) {
      static_cast<void>(frame.release());  // the listener owns it now
    }
  }
}

std::uint64_t Delivery::set_after(std::uint64_t set) const {
  const std::uint64_t next = set + 1;
  const std::uint64_t end = first_set_ + source_.set_count.value_or(0);
  if (settings_.pace == 0 || (source_.set_count && next >= end)) return next;
  const std::chrono::nanoseconds elapsed = Clock::now() - first_due_;
  const auto newest_due = first_set_ + static_cast<std::uint64_t>(elapsed.count() * settings_.pace /
                                                                  kNanosecondsPerSecond);
  const std::uint64_t last = source_.set_count ? end - 1 : newest_due;
  return std::max(next, std::min(newest_due, last));
}

Delivery::Clock::time_point Delivery::due(std::uint64_t set) const {
  const auto sets = static_cast<std::int64_t>(set - first_set_);
  return first_due_ + std::chrono::nanoseconds(sets * kNanosecondsPerSecond / settings_.pace);
}

}  // namespace halcyra::virtual_kinect
