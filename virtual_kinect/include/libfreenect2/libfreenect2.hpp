// Finds, opens and runs Kinect v2 sensors.
#pragma once

#include <memory>
#include <string>

#include <libfreenect2/frame_listener.hpp>

namespace libfreenect2 {

// Belongs to the Freenect2 that opened it.
class Freenect2Device {
 public:
  Freenect2Device() = default;
  virtual ~Freenect2Device() = default;
  Freenect2Device(const Freenect2Device&) = delete;
  Freenect2Device& operator=(const Freenect2Device&) = delete;

  virtual std::string getSerialNumber() = 0;
  // "<unknown>" until the device has been started.
  virtual std::string getFirmwareVersion() = 0;

  // The listeners may be deleted only after close.
  virtual void setColorFrameListener(FrameListener* listener) = 0;
  virtual void setIrAndDepthFrameListener(FrameListener* listener) = 0;

  virtual bool start() = 0;
  virtual bool startStreams(bool rgb, bool depth) = 0;
  virtual bool stop() = 0;
  virtual bool close() = 0;
};

class Freenect2 {
 public:
  Freenect2(void* usb_context = nullptr);
  // Closes and deletes the devices that are still there.
  virtual ~Freenect2();
  Freenect2(const Freenect2&) = delete;
  Freenect2& operator=(const Freenect2&) = delete;

  int enumerateDevices();

  // Empty where there is no such device.
  std::string getDeviceSerialNumber(int index);
  std::string getDefaultDeviceSerialNumber();

  // Null where there is no such device or it cannot be opened. A device that is open already is
  // returned again.
  Freenect2Device* openDevice(int index);
  Freenect2Device* openDevice(const std::string& serial);
  Freenect2Device* openDefaultDevice();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace libfreenect2
