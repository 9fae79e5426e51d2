// The Kinect objects of one run.
#pragma once

#include <memory>

#include <libfreenect2/frame_listener_impl.h>
#include <libfreenect2/libfreenect2.hpp>

namespace halcyra {

// Safe to destroy at any time. First a set that is still held is released, then the members go in
// reverse order: the context, which closes and deletes its device, before the listener, into which
// the driver's threads write until then.
struct KinectSession {
  KinectSession() = default;
  KinectSession(KinectSession&&) = default;
  ~KinectSession() {
    if (listener != nullptr) listener->release(frames);
  }

  std::unique_ptr<libfreenect2::SyncMultiFrameListener> listener;
  std::unique_ptr<libfreenect2::Freenect2> context;
  libfreenect2::Freenect2Device* device = nullptr;  // null without a sensor
  bool streams_started = false;
  libfreenect2::FrameMap frames;  // the set that is held, empty between sets
};

}  // namespace halcyra
