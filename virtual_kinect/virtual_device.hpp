// A device that gets its frames from a source instead of USB.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <libfreenect2/libfreenect2.hpp>

#include "virtual_kinect/delivery.hpp"
#include "virtual_kinect/device_settings.hpp"
#include "virtual_kinect/frame_source.hpp"

namespace halcyra::virtual_kinect {

class VirtualDevice final : public libfreenect2::Freenect2Device {
 public:
  // Calls `open_source` at each start, and `forget` when the device is destroyed.
  VirtualDevice(DeviceSettings settings, std::function<FrameSource()> open_source,
                std::function<void(VirtualDevice*)> forget);
  ~VirtualDevice() override;

  bool is_open() const { return open_; }

  std::string getSerialNumber() override;
  std::string getFirmwareVersion() override;

  void setColorFrameListener(libfreenect2::FrameListener* listener) override;
  void setIrAndDepthFrameListener(libfreenect2::FrameListener* listener) override;

  // False when the device is closed or streams already, and when the settings say so.
  bool start() override;
  bool startStreams(bool rgb, bool depth) override;
  // Ends the streams. False when there are none, when the settings say so, and when the device
  // counts as unplugged.
  bool stop() override;
  // False only when the settings say so; the device is closed all the same.
  bool close() override;

 private:
  void listeners_changed();

  const DeviceSettings settings_;
  const std::function<FrameSource()> open_source_;
  const std::function<void(VirtualDevice*)> forget_;
  bool open_ = true;
  bool firmware_read_ = false;
  Listeners listeners_;
  std::unique_ptr<Delivery> delivery_;  // while streaming
};

}  // namespace halcyra::virtual_kinect
