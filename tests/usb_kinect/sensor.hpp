// One sensor on the bus.
#pragma once

#include <libusb.h>

#include <atomic>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>

#include "tests/usb_kinect/bytes.hpp"
#include "tests/usb_kinect/clock.hpp"
#include "tests/usb_kinect/scene.hpp"

namespace usb_kinect {
struct Sensor;
}

// The types that libusb's header only names. A device is never freed, so that a late use of one is
// counted instead of crashing.
struct libusb_device {
  std::atomic<int> references{1};  // one is the bus's own
  std::uint8_t bus = 0;
  std::uint8_t address = 0;
  std::atomic<bool> present{true};
  usb_kinect::Sensor* sensor = nullptr;  // null: the root hub
};

struct libusb_device_handle {
  libusb_device* device = nullptr;
  bool claimed[2] = {false, false};  // by interface
};

namespace usb_kinect {

// What became of the transfers of an endpoint.
struct TransferCounts {
  long submitted = 0;
  long completed = 0;
  long cancelled = 0;
  long timed_out = 0;
  long failed = 0;
  long refused = 0;
};

using TransferQueue = std::deque<libusb_transfer*>;

struct ColorStream {
  TransferQueue queue;
  TransferCounts counts;
  std::int64_t next_frame = 0;
  bool busy = false;            // amid a packet
  bool transfer_error = false;  // a transfer of this packet is to fail
  Bytes packet;
  std::size_t sent = 0;  // bytes of the packet
  long delivered = 0;    // frames
  long corrupted = 0;
};

struct DepthStream {
  TransferQueue queue;
  TransferCounts counts;
  Time next_tick;  // when the bus asks the endpoint next
  std::int64_t frame = 0;
  int sub_image = 0;
  std::size_t sent = 0;         // bytes of the sub-image
  bool transfer_error = false;  // a transfer of this frame is to fail
  bool stalled = false;
  long delivered = 0;  // frames
  long corrupted = 0;

  bool at_start_of_frame() const { return sub_image == 0 && sent == 0; }
};

struct Sensor {
  int index = 0;
  libusb_device* device = nullptr;
  std::string serial;
  std::shared_ptr<const Scene> scene;  // null until the streams are wanted

  int alternate_setting = 0;  // of the interface with the depth stream
  int opens = 0;
  int submits = 0;
  long status_reads = 0;
  bool gone_after_reset = false;

  std::deque<Bytes> answers;  // to the last command
  bool answer_fails = false;
  int answer_error = LIBUSB_ERROR_TIMEOUT;
  std::map<std::uint32_t, std::uint32_t> color_settings;

  bool streaming = false;
  Time start;                       // of frame 0
  std::int64_t first_sequence = 1;  // number of frame 0
  bool stall_noted = false;
  ColorStream color;
  DepthStream depth;

  long misuse = 0;
};

// When a frame, or a part of it, is due.
Time due(const Sensor& sensor, double frame);

// The frame whose time it is.
std::int64_t current_frame(const Sensor& sensor, Time now);

// The time stamp of a frame, in units of 0.125 ms.
std::uint32_t time_stamp(const Sensor& sensor, std::int64_t frame);

void begin_streams(Sensor& sensor);
void end_streams(Sensor& sensor);

}  // namespace usb_kinect
