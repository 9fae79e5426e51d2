// Waits for a set with either build of the driver.
#pragma once

#include <chrono>
#include <thread>

#include <libfreenect2/frame_listener_impl.h>

namespace halcyra::virtual_kinect {

// The limit only turns a test that would hang into one that fails.
constexpr std::chrono::seconds kPatience{20};

inline bool take_set(libfreenect2::SyncMultiFrameListener& listener,
                     libfreenect2::FrameMap& frames) {
  const auto limit = std::chrono::steady_clock::now() + kPatience;
  while (!listener.hasNewFrame()) {
    if (std::chrono::steady_clock::now() > limit) return false;
    std::this_thread::yield();
  }
  listener.waitForNewFrame(frames);
  return true;
}

}  // namespace halcyra::virtual_kinect
