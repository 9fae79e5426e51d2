#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

#include <libfreenect2/config.h>
#include <libfreenect2/frame_listener_impl.h>

namespace libfreenect2 {

struct SyncMultiFrameListener::State {
  mutable std::mutex mutex;
  std::condition_variable changed;
  unsigned int subscribed = 0;
  unsigned int present = 0;  // types in `latest`
  FrameMap latest;
  bool on_loan = false;  // a set was handed out and is not released yet

  bool set_ready() const { return !on_loan && present == subscribed; }

  void hand_out(FrameMap& frames) {
    frames = std::move(latest);
    latest.clear();
    present = 0;
    on_loan = true;
  }
};

SyncMultiFrameListener::SyncMultiFrameListener(unsigned int frame_types)
    : state_(std::make_unique<State>()) {
  state_->subscribed = frame_types;
}

SyncMultiFrameListener::~SyncMultiFrameListener() {
  for (const auto& [type, frame] : state_->latest) delete frame;
}

bool SyncMultiFrameListener::hasNewFrame() const {
  const std::lock_guard lock(state_->mutex);
  return state_->set_ready();
}

#ifdef LIBFREENECT2_THREADING_STDLIB
bool SyncMultiFrameListener::waitForNewFrame(FrameMap& frame, int milliseconds) {
  std::unique_lock lock(state_->mutex);
  if (!state_->changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                                [this] { return state_->set_ready(); })) {
    return false;
  }
  state_->hand_out(frame);
  return true;
}
#else
bool SyncMultiFrameListener::waitForNewFrame(FrameMap& frame, int /*milliseconds*/) {
  waitForNewFrame(frame);
  return true;
}
#endif

void SyncMultiFrameListener::waitForNewFrame(FrameMap& frame) {
  std::unique_lock lock(state_->mutex);
  state_->changed.wait(lock, [this] { return state_->set_ready(); });
  state_->hand_out(frame);
}

// Frames are deleted outside the lock, here and below: deleting one may wake its driver, which then
// delivers the next frame to this listener.
void SyncMultiFrameListener::release(FrameMap& frame) {
  for (const auto& [type, held] : frame) delete held;
  frame.clear();
  const std::lock_guard lock(state_->mutex);
  state_->on_loan = false;
  state_->changed.notify_all();
}

bool SyncMultiFrameListener::onNewFrame(Frame::Type type, Frame* frame) {
  const Frame* replaced = nullptr;
  {
    const std::lock_guard lock(state_->mutex);
    const auto type_bit = static_cast<unsigned int>(type);
    if ((state_->subscribed & type_bit) == 0) return false;
    Frame*& place = state_->latest[type];
    replaced = place;
    place = frame;
    state_->present |= type_bit;
    state_->changed.notify_all();
  }
  delete replaced;
  return true;
}

void SyncMultiFrameListener::onNewSet(FrameMap& set) {
  {
    const std::lock_guard lock(state_->mutex);
    for (auto& [type, frame] : set) {
      const auto type_bit = static_cast<unsigned int>(type);
      if ((state_->subscribed & type_bit) == 0) continue;
      std::swap(state_->latest[type], frame);
      state_->present |= type_bit;
    }
    state_->changed.notify_all();
  }
  for (const auto& [type, replaced] : set) delete replaced;
  set.clear();
}

}  // namespace libfreenect2
