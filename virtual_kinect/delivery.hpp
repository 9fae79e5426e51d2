// Hands the frames of a source to the listeners, on a thread of its own.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include <libfreenect2/frame_listener.hpp>

#include "virtual_kinect/frame_source.hpp"

namespace halcyra::virtual_kinect {

struct Listeners {
  libfreenect2::FrameListener* color = nullptr;
  libfreenect2::FrameListener* ir_and_depth = nullptr;
};

// With a pace above 0, set k is due k/pace seconds after the first; a set whose successor is due
// already is passed over, as nobody could take it. With pace 0 the next set is delivered when every
// frame of the one before has been deleted. Frames may outlive the delivery.
class Delivery {
 public:
  Delivery(FrameSource source, int pace, const Listeners& listeners);
  // Ends the thread; the listeners receive nothing afterwards.
  ~Delivery();
  Delivery(const Delivery&) = delete;
  Delivery& operator=(const Delivery&) = delete;

  void set_listeners(const Listeners& listeners);

 private:
  using Clock = std::chrono::steady_clock;
  using PreparedFrame = std::pair<libfreenect2::Frame::Type, std::unique_ptr<libfreenect2::Frame>>;
  struct Turn;
  class SetHold;

  void run();
  std::vector<PreparedFrame> prepare(std::uint64_t set) const;
  bool wait_for_turn(std::uint64_t set);
  void hand_out(std::vector<PreparedFrame>& frames);
  std::uint64_t set_after(std::uint64_t set) const;
  Clock::time_point due(std::uint64_t set) const;

  const FrameSource source_;
  const int pace_;
  const std::shared_ptr<Turn> turn_;
  Clock::time_point first_due_;
  std::thread thread_;
};

}  // namespace halcyra::virtual_kinect
