// A sensor session whose frames are handed in one set at a time, in place of a device that delivers
// them when it likes.
#pragma once

#include <cstring>
#include <memory>

#include <libfreenect2/frame_listener_impl.h>
#include <opencv2/core/mat.hpp>

#include "capture/kinect_session.hpp"

namespace halcyra {

// A session that waits for frames, as after a successful start.
inline void start_fed_sensor(KinectSession& session) {
  using libfreenect2::Frame;
  session.listener = std::make_unique<libfreenect2::SyncMultiFrameListener>(
      static_cast<unsigned int>(Frame::Color | Frame::Ir | Frame::Depth));
  session.streams_started = true;
}

// Hands in one frame with a copy of `pixels`, which have four bytes each.
inline void feed_frame(KinectSession& session, libfreenect2::Frame::Type type,
                       const cv::Mat& pixels) {
  using libfreenect2::Frame;
  auto frame = std::make_unique<Frame>(static_cast<std::size_t>(pixels.cols),
                                       static_cast<std::size_t>(pixels.rows), pixels.elemSize());
  std::memcpy(frame->data, pixels.data, pixels.total() * pixels.elemSize());
  frame->format = type == Frame::Color ? Frame::BGRX : Frame::Float;
  session.listener->onNewFrame(type, frame.release());
}

// Hands in a whole set: `color` with 4 8-bit channels, the others with one 32-bit float.
inline void feed_set(KinectSession& session, const cv::Mat& color, const cv::Mat& infrared,
                     const cv::Mat& depth) {
  feed_frame(session, libfreenect2::Frame::Color, color);
  feed_frame(session, libfreenect2::Frame::Ir, infrared);
  feed_frame(session, libfreenect2::Frame::Depth, depth);
}

}  // namespace halcyra
