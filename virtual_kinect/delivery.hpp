// Hands the frames of a source to the listeners, on a thread of its own.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include <libfreenect2/frame_listener_impl.h>

#include "virtual_kinect/delivery_settings.hpp"
#include "virtual_kinect/frame_source.hpp"

namespace halcyra::virtual_kinect {

struct Listeners {
  libfreenect2::FrameListener* color = nullptr;
  libfreenect2::FrameListener* ir_and_depth = nullptr;
};

// With a pace above 0, set k is due k/pace seconds after the first. A set whose successor is due
// already is skipped, since nobody could take it; the last set never is. With pace 0 the next set
// is delivered once every frame of the one before has been deleted. Where frames get lost it waits
// for a thirtieth of a second at most, since nobody may ever release an incomplete set.
//
// Of a source whose sets are made on demand, one set is made ahead of the reader: the newest that
// is due, as soon as the one before has been handed out. It is handed out itself once that one's
// frames have been deleted, or a quarter of a second later if nobody takes them. So a reader gets
// sets that are at most as old as the time it takes between two of them, and no others are made.
//
// A SyncMultiFrameListener that takes all streams gets the frames of a set at one moment, any other
// listener one after the other.
//
// An exception of the source or a listener ends the streams as the death of a sensor does: one line
// on standard error, and nothing more arrives. Frames may outlive the delivery.
class Delivery {
 public:
  Delivery(FrameSource source, const DeliverySettings& settings, const Listeners& listeners);
  // Ends the thread; the listeners receive nothing afterwards.
  ~Delivery();
  Delivery(const Delivery&) = delete;
  Delivery& operator=(const Delivery&) = delete;

  // From the next set on, or in the middle of one: what is just being handed out still goes to the
  // listener of before.
  void set_listeners(const Listeners& listeners);

  // True when no set will follow: the last one was delivered, or the streams died.
  bool is_over() const { return is_over_; }

  // Ends the thread, then hands out one more set, like a sensor that is stopped in mid-set. Streams
  // that died hand out nothing.
  void end_with_a_late_set();

 private:
  using Clock = std::chrono::steady_clock;
  using PreparedFrame = std::pair<libfreenect2::Frame::Type, std::unique_ptr<libfreenect2::Frame>>;
  struct Shared;
  class SetHold;

  void deliver(const std::function<void()>& work);
  void play();
  bool play_once();
  void end();
  std::unique_ptr<libfreenect2::Frame> make_frame_of_set(
      libfreenect2::Frame::Type stream, std::uint64_t set,
      const std::shared_ptr<const SetHold>& hold) const;
  bool has_all_frames(std::uint64_t set) const;
  bool needs_a_rest(std::uint64_t set) const;
  std::vector<PreparedFrame> prepare(std::uint64_t set) const;
  bool is_held(std::uint64_t set) const;
  bool rest(std::chrono::nanoseconds duration);
  bool wait_for_turn(std::uint64_t set);
  void wait_for_release(std::unique_lock<std::mutex>& lock) const;
  libfreenect2::SyncMultiFrameListener* taker_of_sets() const;
  void hand_out(std::vector<PreparedFrame>& frames);
  std::uint64_t set_after(std::uint64_t set) const;
  std::uint32_t timestamp_of(std::uint64_t set) const;
  Clock::time_point due(std::uint64_t set) const;

  const FrameSource source_;
  const DeliverySettings settings_;
  const std::shared_ptr<Shared> shared_;
  std::uint64_t first_set_ = 0;  // the first since the last pause
  std::uint64_t next_set_ = 0;
  std::uint64_t pauses_ = 0;
  Clock::time_point first_due_;
  bool died_ = false;  // of an exception; written by the thread, read after its end
  std::atomic<bool> is_over_ = false;
  std::thread thread_;
};

}  // namespace halcyra::virtual_kinect
