#include "tests/usb_kinect/depth_stream.hpp"

#include <algorithm>
#include <cstring>

#include "tests/usb_kinect/depth_codes.hpp"
#include "tests/usb_kinect/faults.hpp"

namespace usb_kinect {
namespace {

constexpr std::size_t kFooterBytes = 152;

void begin_frame(DepthStream& depth, std::int64_t frame) {
  depth.frame = frame;
  depth.sub_image = 0;
  depth.sent = 0;
}

// A stall lets the first sub-image of the next frame through. That tells the reader that the frame
// before it is complete.
bool stalls_now(Sensor& sensor, Time now) {
  const DepthStream& depth = sensor.depth;
  const std::int64_t frame = depth.sub_image > 0 ? depth.frame : depth.frame - 1;
  return stalls(sensor, Stream::kDepth, frame, now);
}

// Whether a packet is due. Leaves out what was missed, what a stall has swallowed, and a sub-image
// that is to be missing.
bool packet_due(Sensor& sensor, Time now) {
  DepthStream& depth = sensor.depth;
  for (;;) {
    const std::int64_t current = current_frame(sensor, now);
    if (depth.at_start_of_frame() && current > depth.frame + 1) depth.frame = current;
    const double place = static_cast<double>(depth.frame) + depth.sub_image / double{kSubImages};
    if (now < due(sensor, place)) return false;
    if (stalls_now(sensor, now)) {
      depth.stalled = true;
      return false;
    }
    if (depth.stalled) {
      depth.stalled = false;
      begin_frame(depth, std::max(depth.frame + 1, current));
    } else if (depth.sub_image == 4 && damage_to(Stream::kDepth, depth.frame) == "sub") {
      ++depth.sub_image;
    } else {
      return true;
    }
  }
}

void write_footer(const Sensor& sensor, bool wrong_length, std::uint8_t* place) {
  const DepthStream& depth = sensor.depth;
  Bytes footer(kFooterBytes);
  put32(footer, 0, 0x39393939);
  put32(footer, 4, 0x42424242);
  put32(footer, 8, time_stamp(sensor, depth.frame));
  put32(footer, 12, static_cast<std::uint32_t>(sensor.first_sequence + depth.frame));
  put32(footer, 16, static_cast<std::uint32_t>(depth.sub_image));
  put32(footer, 20, static_cast<std::uint32_t>(kSubImageBytes - (wrong_length ? 4 : 0)));
  std::memcpy(place, footer.data(), footer.size());
}

void end_sub_image(DepthStream& depth) {
  depth.sent = 0;
  if (++depth.sub_image < kSubImages) return;
  begin_frame(depth, depth.frame + 1);
  ++depth.delivered;
}

// Writes one packet and returns its size, 0 if none is due. `error` is set if it got lost.
std::size_t write_packet(Sensor& sensor, Time now, std::uint8_t* buffer, std::size_t room,
                         bool& error) {
  if (!sensor.streaming || sensor.alternate_setting != 1 || !packet_due(sensor, now)) return 0;
  DepthStream& depth = sensor.depth;
  const std::string damage = damage_to(Stream::kDepth, depth.frame);
  if (depth.at_start_of_frame()) {
    if (!damage.empty()) ++depth.corrupted;
    depth.transfer_error = damage == "transfer";
  }
  std::size_t size = std::min(room, kSubImageBytes - depth.sent);
  if (damage == "dark") {
    std::memset(buffer, 0, size);
  } else {
    const Bytes& pixels = damage == "noise" ? sensor.scene->noise : sensor.scene->depth;
    const std::size_t sub_image = static_cast<std::size_t>(depth.sub_image) * kSubImageBytes;
    std::memcpy(buffer, &pixels[sub_image + depth.sent], size);
  }
  error = damage == "iso" && depth.sub_image == 3 && depth.sent == 2 * kIsochronousPacket;
  depth.sent += size;
  if (depth.sent == kSubImageBytes && room - size >= kFooterBytes) {
    write_footer(sensor, damage == "length" && depth.sub_image == 5, buffer + size);
    size += kFooterBytes;
    end_sub_image(depth);
  }
  return size;
}

libusb_transfer_status fill(libusb_transfer& transfer, Sensor& sensor, Time now) {
  DepthStream& depth = sensor.depth;
  libusb_transfer_status status = LIBUSB_TRANSFER_COMPLETED;
  std::uint8_t* buffer = transfer.buffer;
  for (int i = 0; i < transfer.num_iso_packets; ++i) {
    libusb_iso_packet_descriptor& packet = transfer.iso_packet_desc[i];
    bool error = false;
    const std::size_t size = write_packet(sensor, now, buffer, packet.length, error);
    packet.status = error ? LIBUSB_TRANSFER_ERROR : LIBUSB_TRANSFER_COMPLETED;
    packet.actual_length = error ? 0 : static_cast<unsigned int>(size);
    if (depth.transfer_error && depth.sub_image == 5) {
      status = LIBUSB_TRANSFER_ERROR;
      depth.transfer_error = false;
    }
    buffer += packet.length;
  }
  transfer.actual_length = 0;
  return status;
}

}  // namespace

// The bus asks the endpoint every 0.125 ms, so a transfer of eight packets ends every millisecond,
// with empty packets where the sensor has nothing to say.
void send_depth(Sensor& sensor, Time now, Transfers& done) {
  constexpr int kMostAtOnce = 16;
  constexpr double kTickMs = 0.125;
  constexpr double kTooLateMs = 100;
  DepthStream& depth = sensor.depth;
  if (now > in_ms(depth.next_tick, kTooLateMs)) depth.next_tick = now;
  for (int i = 0; i < kMostAtOnce && !depth.queue.empty() && depth.next_tick <= now; ++i) {
    libusb_transfer* const transfer = depth.queue.front();
    depth.queue.pop_front();
    depth.next_tick = in_ms(depth.next_tick, kTickMs * std::max(transfer->num_iso_packets, 1));
    finish(transfer, fill(*transfer, sensor, now), done);
  }
}

}  // namespace usb_kinect
