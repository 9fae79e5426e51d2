// Frames that count how many of them exist.
#pragma once

#include <atomic>
#include <cstdint>

#include <libfreenect2/frame_listener.hpp>

namespace halcyra {

class CountedFrame final : public libfreenect2::Frame {
 public:
  explicit CountedFrame(std::atomic<int>& alive, std::uint32_t number = 0)
      : Frame(1, 1, 4), alive_(alive) {
    sequence = number;
    ++alive_;
  }
  ~CountedFrame() override { --alive_; }

 private:
  std::atomic<int>& alive_;
};

}  // namespace halcyra
