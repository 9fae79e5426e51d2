#include "virtual_kinect/delivery.hpp"

#include <algorithm>
#include <condition_variable>
#include <mutex>

#include "virtual_kinect/delivered_frame.hpp"

namespace halcyra::virtual_kinect {

namespace {

using libfreenect2::Frame;
using libfreenect2::FrameListener;

constexpr int kSensorPace = 30;  // also what the time stamps of pace 0 pretend
constexpr std::uint64_t kTicksPerSecond = 8000;
constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

}  // namespace

// Shared with the frames, which may outlive the delivery. Its mutex is never held while a listener
// is called or a frame deleted.
struct Delivery::Turn {
  std::mutex mutex;
  std::condition_variable changed;
  bool ended = false;
  bool set_held = false;  // frames of the set delivered last still exist; pace 0 only
  Listeners listeners;

  bool is_heard() const { return listeners.color != nullptr || listeners.ir_and_depth != nullptr; }
};

// The frames of one set share this; the last of them to be deleted lets the next set go.
class Delivery::SetHold {
 public:
  explicit SetHold(std::shared_ptr<Turn> turn) : turn_(std::move(turn)) {}
  ~SetHold() {
    const std::lock_guard lock(turn_->mutex);
    turn_->set_held = false;
    turn_->changed.notify_all();
  }
  SetHold(const SetHold&) = delete;
  SetHold& operator=(const SetHold&) = delete;

 private:
  const std::shared_ptr<Turn> turn_;
};

Delivery::Delivery(FrameSource source, int pace, const Listeners& listeners)
    : source_(std::move(source)), pace_(pace), turn_(std::make_shared<Turn>()) {
  turn_->listeners = listeners;
  if (!source_.streams.empty()) {
    thread_ = std::thread([this] { run(); });
  }
}

Delivery::~Delivery() {
  {
    const std::lock_guard lock(turn_->mutex);
    turn_->ended = true;
    turn_->changed.notify_all();
  }
  if (thread_.joinable()) {
    thread_.join();
  }
}

void Delivery::set_listeners(const Listeners& listeners) {
  const std::lock_guard lock(turn_->mutex);
  turn_->listeners = listeners;
  turn_->changed.notify_all();
}

// A set is decoded before its turn has come, while the program still works on the one before.
void Delivery::run() {
  for (std::uint64_t set = 0; !source_.set_count || set < *source_.set_count;
       set = set_after(set)) {
    std::vector<PreparedFrame> frames = prepare(set);
    if (set == 0) {
      first_due_ = Clock::now();
    }
    if (!wait_for_turn(set)) {
      return;
    }
    hand_out(frames);
  }
}

std::vector<Delivery::PreparedFrame> Delivery::prepare(std::uint64_t set) const {
  const std::shared_ptr<const SetHold> hold =
      pace_ == 0 ? std::make_shared<const SetHold>(turn_) : nullptr;
  const auto pace = static_cast<std::uint64_t>(pace_ == 0 ? kSensorPace : pace_);
  std::vector<PreparedFrame> frames;
  for (const Frame::Type stream : source_.streams) {
    auto frame = make_frame(source_.image(stream, set), hold);
    frame->sequence = static_cast<std::uint32_t>(set);
    frame->timestamp = static_cast<std::uint32_t>(set * kTicksPerSecond / pace);
    frames.emplace_back(stream, std::move(frame));
  }
  return frames;
}

// False when the delivery has ended.
bool Delivery::wait_for_turn(std::uint64_t set) {
  std::unique_lock lock(turn_->mutex);
  if (pace_ > 0) {
    return !turn_->changed.wait_until(lock, due(set), [this] { return turn_->ended; });
  }
  turn_->changed.wait(lock,
                      [this] { return turn_->ended || (!turn_->set_held && turn_->is_heard()); });
  turn_->set_held = true;
  return !turn_->ended;
}

// Leaves the frames that no listener took.
void Delivery::hand_out(std::vector<PreparedFrame>& frames) {
  for (auto& [stream, frame] : frames) {
    FrameListener* listener = nullptr;
    {
      const std::lock_guard lock(turn_->mutex);
      listener = stream == Frame::Color ? turn_->listeners.color : turn_->listeners.ir_and_depth;
    }
    if (listener != nullptr && listener->onNewFrame(stream, frame.get())) {
      static_cast<void>(frame.release());  // the listener owns it now
    }
  }
}

std::uint64_t Delivery::set_after(std::uint64_t set) const {
  const std::uint64_t next = set + 1;
  if (pace_ == 0 || (source_.set_count && next >= *source_.set_count)) {
    return next;
  }
  const std::chrono::nanoseconds elapsed = Clock::now() - first_due_;
  const auto newest_due =
      static_cast<std::uint64_t>(elapsed.count() * pace_ / kNanosecondsPerSecond);
  const std::uint64_t last = source_.set_count ? *source_.set_count - 1 : newest_due;
  return std::max(next, std::min(newest_due, last));
}

Delivery::Clock::time_point Delivery::due(std::uint64_t set) const {
  return first_due_ +
         std::chrono::nanoseconds(static_cast<std::int64_t>(set) * kNanosecondsPerSecond / pace_);
}

}  // namespace halcyra::virtual_kinect
