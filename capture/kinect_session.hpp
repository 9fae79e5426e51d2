// The Kinect objects of one run.
#pragma once

#include <memory>

#include <libfreenect2/frame_listener_impl.h>
#include <libfreenect2/libfreenect2.hpp>

namespace halcyra {

// Destroyed in reverse order: the context, which closes and deletes its device, then the listener,
// into which the driver's threads write until the device is closed.
struct KinectSession {
  std::unique_ptr<libfreenect2::SyncMultiFrameListener> listener;
  std::unique_ptr<libfreenect2::Freenect2> context;
  libfreenect2::Freenect2Device* device = nullptr;  // null without a sensor
  bool streams_started = false;
  libfreenect2::FrameMap frames;  // the set held at the moment, empty between sets
};

}  // namespace halcyra
