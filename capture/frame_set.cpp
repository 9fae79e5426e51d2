#include "capture/frame_set.hpp"

#include <chrono>
#include <thread>

#include "app/run_state/runtime_status.hpp"

namespace halcyra {
namespace {

using libfreenect2::Frame;

constexpr int kTimeoutMs = 1000;

// False if no set was complete within the time limit.
bool poll_for_frames(const KinectSession& session) {
  constexpr std::chrono::milliseconds kPause(1);
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(kTimeoutMs);
  while (!session.listener->hasNewFrame()) {
    if (std::chrono::steady_clock::now() >= deadline) return false;
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

// Many builds of the driver ignore the timeout and would block for ever on a stalled sensor, so
// poll until a set is there. Which kind of build is loaded is not known when this is compiled: both
// have the same soname.
bool wait_for_frames(KinectSession& session) {
  if (!poll_for_frames(session)) return false;
  return session.listener->waitForNewFrame(session.frames, kTimeoutMs);
}

void report_timeout(RuntimeStatus& status) {
  status.kinect_message = "timeout waiting for Kinect frame";
  if (!status.ir_ok) status.ir_message = "timeout waiting for IR frame";
  if (!status.depth_ok) status.depth_message = "timeout waiting for depth frame";
}

// The held frame of a stream, null when it is missing or its pixels cannot be read.
const Frame* usable_frame(const KinectSession& session, Frame::Type type) {
  const auto found = session.frames.find(type);
  if (found == session.frames.end() || found->second == nullptr) return nullptr;
  const Frame* frame = found->second;
  const bool usable = frame->data != nullptr && frame->width != 0 && frame->height != 0 &&
                      frame->bytes_per_pixel == 4;
  return usable ? frame : nullptr;
}

// The frame's pixels in place; valid while the set is held.
cv::Mat pixels_of(const Frame& frame, int type) {
  return cv::Mat(static_cast<int>(frame.height), static_cast<int>(frame.width), type, frame.data);
}

}  // namespace

bool take_frame_set(KinectSession& session, RuntimeStatus& status) {
  if (session.listener == nullptr || !session.streams_started) return false;
  if (wait_for_frames(session)) return true;
  report_timeout(status);
  return false;
}

void convert_infrared(const KinectSession& session, RuntimeStatus& status, cv::Mat& preview) {
  const Frame* frame = usable_frame(session, Frame::Ir);
  if (frame != nullptr && infrared_picture(pixels_of(*frame, CV_32FC1), preview)) {
    status.ir_ok = true;
    status.ir_message = "IR stream running";
  } else if (!status.ir_ok) {
    status.ir_message = "IR frame unavailable or not convertible";
  }
}

void convert_depth(const KinectSession& session, RuntimeStatus& status, cv::Mat& preview) {
  const Frame* frame = usable_frame(session, Frame::Depth);
  if (frame != nullptr && depth_picture(pixels_of(*frame, CV_32FC1), preview)) {
    status.depth_ok = true;
    status.depth_message = "Depth stream running";
  } else if (!status.depth_ok) {
    status.depth_message = "Depth frame unavailable or not convertible";
  }
}

bool convert_color(const KinectSession& session, ColorImages& images) {
  const Frame* frame = usable_frame(session, Frame::Color);
  if (frame == nullptr) return false;
  const ChannelOrder order =
      frame->format == Frame::RGBX ? ChannelOrder::kRgbx : ChannelOrder::kBgrx;
  color_images(pixels_of(*frame, CV_8UC4), order, images);
  return true;
}

void release_frame_set(KinectSession& session) { session.listener->release(session.frames); }

}  // namespace halcyra
