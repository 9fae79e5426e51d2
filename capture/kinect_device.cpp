#include "capture/kinect_device.hpp"

#include <string>

#include "app/run_state/event_log.hpp"
#include "app/run_state/runtime_status.hpp"

namespace halcyra {
namespace {

using libfreenect2::Frame;

void report_started(const KinectSession& session, RuntimeStatus& status) {
  status.rgb_ok = true;
  status.kinect_serial = session.device->getSerialNumber();
  status.kinect_firmware = session.device->getFirmwareVersion();
  status.kinect_message = "Kinect RGB/IR/Depth streams running";
  status.ir_message = "waiting for IR frames";
  status.depth_message = "waiting for depth frames";
  add_event(status, "Kinect connected: " + status.kinect_serial);
  add_event(status, "RGB/IR/Depth streams started");
}

void report_start_failure(RuntimeStatus& status) {
  status.kinect_message = "failed to start RGB/IR/Depth streams";
  status.ir_message = "Kinect stream start failed";
  status.depth_message = "Kinect stream start failed";
  add_event(status, "RGB/IR/Depth stream start failed");
}

// If libfreenect2 fails to start while it submits the infrared transfers, its colour stream is
// already running, and `stop` refuses to end it. Its decoder would then use its listener after
// `close` has taken that away, and the process would crash. Starting no stream makes `stop` end
// what runs.
void end_half_started_streams(libfreenect2::Freenect2Device& device) {
  if (device.startStreams(false, false)) device.stop();
}

void start_streams(KinectSession& session, RuntimeStatus& status) {
  session.listener = std::make_unique<libfreenect2::SyncMultiFrameListener>(
      static_cast<unsigned int>(Frame::Color | Frame::Ir | Frame::Depth));
  session.device->setColorFrameListener(session.listener.get());
  session.device->setIrAndDepthFrameListener(session.listener.get());
  session.streams_started = session.device->start();
  if (session.streams_started) {
    report_started(session, status);
  } else {
    end_half_started_streams(*session.device);
    report_start_failure(status);
  }
}

void open_default_device(KinectSession& session, RuntimeStatus& status) {
  status.kinect_connected = true;
  const std::string serial = session.context->getDefaultDeviceSerialNumber();
  session.device = session.context->openDevice(serial);
  if (session.device == nullptr) {
    status.kinect_message = "failed to open Kinect device";
    add_event(status, "Kinect open failed");
    return;
  }
  start_streams(session, status);
}

}  // namespace

void open_kinect(KinectSession& session, const Options& options, RuntimeStatus& status) {
  session.context = std::make_unique<libfreenect2::Freenect2>();
  if (options.no_camera) {
    status.kinect_message = "no-camera mode requested";
    add_event(status, "No-camera mode active");
  } else if (session.context->enumerateDevices() <= 0) {
    status.kinect_message = "no Kinect v2 device detected";
    add_event(status, "No Kinect v2 device detected");
  } else {
    open_default_device(session, status);
  }
}

void close_kinect(KinectSession& session) {
  if (session.device == nullptr) return;
  if (session.streams_started) session.device->stop();
  session.device->close();
}

}  // namespace halcyra
