#include "tests/usb_kinect/color_stream.hpp"

#include <algorithm>
#include <cstring>

#include "tests/usb_kinect/faults.hpp"

namespace usb_kinect {
namespace {

constexpr std::size_t kFooterBytes = 56;

Bytes damaged(Bytes jpeg, const std::string& damage) {
  if (damage == "jpeg") {
    const std::size_t begin = jpeg.size() / 2;
    const std::size_t end = std::min(begin + 2000, jpeg.size() - 2);
    for (std::size_t i = begin; i < end; ++i) jpeg[i] = byte(i * 37);
  } else if (damage == "header") {
    jpeg[0] = 0;
    jpeg[1] = 0;
  } else if (damage == "noeoi") {
    jpeg.back() = 0;
  } else if (damage == "big") {
    constexpr std::size_t kMoreThanReadersTake = 2100000;
    jpeg.insert(jpeg.end() - 2, kMoreThanReadersTake, 0x20);
  }
  return jpeg;
}

// Header, JPEG, filler and footer.
Bytes packet_of(const Sensor& sensor, std::int64_t frame, const std::string& damage) {
  const Scene& scene = *sensor.scene;
  const auto picture = static_cast<std::size_t>(frame / scene.color_hold) % scene.jpegs.size();
  const Bytes jpeg = damaged(scene.jpegs[picture], damage);
  const auto sequence = static_cast<std::uint32_t>(sensor.first_sequence + frame);

  Bytes packet(8);
  put32(packet, 0, sequence);
  put32(packet, 4, 0x42424242);
  packet.insert(packet.end(), jpeg.begin(), jpeg.end());
  while (packet.size() % 4 != 0) packet.push_back(0xa5);
  // The last USB packet has to be a short one: that ends the transfer.
  const std::size_t filler = (packet.size() + kFooterBytes) % 1024 == 0 ? 4 : 0;
  packet.insert(packet.end(), filler, 'Z');
  const std::size_t footer = packet.size();
  packet.resize(footer + kFooterBytes);
  put32(packet, footer, 0x39393939);
  put32(packet, footer + 4, damage == "footer" ? sequence + 1 : sequence);
  put32(packet, footer + 8, static_cast<std::uint32_t>(filler));
  put32(packet, footer + 20, time_stamp(sensor, frame));
  put_float(packet, footer + 24, 10.0F);  // exposure
  put_float(packet, footer + 28, 1.0F);   // gain
  put32(packet, footer + 32, 0x42424242);
  put32(packet, footer + 36, static_cast<std::uint32_t>(packet.size()));
  put_float(packet, footer + 40, 1.0F);  // gamma

  if (damage == "short" && packet.size() > 50000) {
    packet.erase(packet.begin() + 20000, packet.begin() + 20000 + 16384);
  }
  return packet;
}

// False if no frame is due.
bool begin_packet(Sensor& sensor, Time now) {
  ColorStream& color = sensor.color;
  const std::int64_t frame = current_frame(sensor, now);
  if (frame < color.next_frame || stalls(sensor, Stream::kColor, frame, now)) return false;
  const std::string damage = damage_to(Stream::kColor, frame);
  if (!damage.empty()) ++color.corrupted;
  color.transfer_error = damage == "transfer";
  color.packet = packet_of(sensor, frame, damage);
  color.next_frame = frame + 1;
  color.sent = 0;
  color.busy = true;
  return true;
}

}  // namespace

void send_color(Sensor& sensor, Time now, Transfers& done) {
  ColorStream& color = sensor.color;
  while (sensor.streaming && !color.queue.empty()) {
    if (!color.busy && !begin_packet(sensor, now)) return;
    libusb_transfer* const transfer = color.queue.front();
    color.queue.pop_front();
    const std::size_t size =
        std::min(static_cast<std::size_t>(transfer->length), color.packet.size() - color.sent);
    std::memcpy(transfer->buffer, color.packet.data() + color.sent, size);
    transfer->actual_length = static_cast<int>(size);
    color.sent += size;
    const bool fails = color.transfer_error && color.sent > color.packet.size() / 2;
    if (fails) color.transfer_error = false;
    if (color.sent == color.packet.size()) {
      color.busy = false;
      ++color.delivered;
    }
    finish(transfer, fails ? LIBUSB_TRANSFER_ERROR : LIBUSB_TRANSFER_COMPLETED, done);
  }
}

}  // namespace usb_kinect
