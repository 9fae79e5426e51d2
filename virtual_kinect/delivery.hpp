// Hands the frames of a source to the listeners, on a thread of its own.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include <libfreenect2/frame_listener.hpp>

#include "virtual_kinect/delivery_settings.hpp"
#include "virtual_kinect/frame_source.hpp"

namespace halcyra::virtual_kinect {

struct Listeners {
  libfreenect2::FrameListener* color = nullptr;
  libfreenect2::FrameListener* ir_and_depth = nullptr;
};

// With a pace above 0, set k is due k/pace seconds after the first; a set whose successor is due
// already is passed over, as nobody could take it. With pace 0 the next set is delivered when every
// frame of the one before has been deleted; where frames get lost, at the latest a thirtieth of a
// second later, as nobody may ever release a set that is incomplete. Frames may outlive the
// delivery.
class Delivery {
 public:
  Delivery(FrameSource source, const DeliverySettings& settings, const Listeners& listeners);
  // Ends the thread; the listeners receive nothing afterwards.
  ~Delivery();
  Delivery(const Delivery&) = delete;
  Delivery& operator=(const Delivery&) = delete;

  void set_listeners(const Listeners& listeners);

  // Whether the last set was delivered and none will follow.
  bool is_over() const { return is_over_; }

  // Ends the thread, then hands out one more set all the same, as a sensor does that was already at
  // it.
  void end_with_a_late_set();

 private:
  using Clock = std::chrono::steady_clock;
  using PreparedFrame = std::pair<libfreenect2::Frame::Type, std::unique_ptr<libfreenect2::Frame>>;
  struct Turn;
  class SetHold;

  void run();
  bool play_once();
  void end();
  std::unique_ptr<libfreenect2::Frame> make_faulty_frame(
      libfreenect2::Frame::Type stream, std::uint64_t set,
      const std::shared_ptr<const SetHold>& hold) const;
  bool has_all_frames(std::uint64_t set) const;
  bool needs_a_rest(std::uint64_t set) const;
  std::vector<PreparedFrame> prepare(std::uint64_t set) const;
  bool rest(std::chrono::nanoseconds duration);
  bool wait_for_turn(std::uint64_t set);
  void hand_out(std::vector<PreparedFrame>& frames);
  std::uint64_t set_after(std::uint64_t set) const;
  std::uint32_t timestamp_of(std::uint64_t set) const;
  Clock::time_point due(std::uint64_t set) const;

  const FrameSource source_;
  const DeliverySettings settings_;
  const std::shared_ptr<Turn> turn_;
  std::uint64_t first_set_ = 0;  // of this playing of the sets
  std::uint64_t next_set_ = 0;
  std::uint64_t pauses_ = 0;
  Clock::time_point first_due_;
  std::atomic<bool> is_over_ = false;
  std::thread thread_;
};

}  // namespace halcyra::virtual_kinect
