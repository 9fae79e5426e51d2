// The Kinect objects of one run.
#pragma once

#include <memory>

#include <libfreenect2/frame_listener_impl.h>
#include <libfreenect2/libfreenect2.hpp>

namespace halcyra {

// Destroyed in reverse order: the listener, then the context, which owns the device.
struct KinectSession {
  std::unique_ptr<libfreenect2::Freenect2> context;
  libfreenect2::Freenect2Device* device = nullptr;  // null without a sensor
  std::unique_ptr<libfreenect2::SyncMultiFrameListener> listener;
  bool streams_started = false;
  libfreenect2::FrameMap frames;  // the set held at the moment, empty between sets
};

}  // namespace halcyra
