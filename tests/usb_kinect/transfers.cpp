#include "tests/usb_kinect/transfers.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace usb_kinect {
namespace {

// Keeps the transfer behind the state aligned.
constexpr std::size_t kAlignment = alignof(std::max_align_t);
constexpr std::size_t kStateRoom =
    (sizeof(TransferState) + kAlignment - 1) / kAlignment * kAlignment;

void count_end(TransferCounts& counts, libusb_transfer_status status) {
  switch (status) {
    case LIBUSB_TRANSFER_COMPLETED:
      ++counts.completed;
      break;
    case LIBUSB_TRANSFER_CANCELLED:
      ++counts.cancelled;
      break;
    case LIBUSB_TRANSFER_TIMED_OUT:
      ++counts.timed_out;
      break;
    default:
      ++counts.failed;
  }
}

}  // namespace

libusb_transfer* allocate_transfer(int packets) {
  const std::size_t packet_room =
      static_cast<std::size_t>(std::max(packets, 0)) * sizeof(libusb_iso_packet_descriptor);
  void* const memory = std::calloc(1, kStateRoom + sizeof(libusb_transfer) + packet_room);
  new (memory) TransferState;
  return reinterpret_cast<libusb_transfer*>(static_cast<char*>(memory) + kStateRoom);
}

void free_transfer(libusb_transfer* transfer) { std::free(&state_of(transfer)); }

TransferState& state_of(libusb_transfer* transfer) {
  char* const place = reinterpret_cast<char*>(transfer) - kStateRoom;
  return *std::launder(reinterpret_cast<TransferState*>(place));
}

bool is_isochronous(const libusb_transfer& transfer) {
  return transfer.type == LIBUSB_TRANSFER_TYPE_ISOCHRONOUS;
}

void finish(libusb_transfer* transfer, libusb_transfer_status status, Transfers& done) {
  TransferState& state = state_of(transfer);
  const bool isochronous = is_isochronous(*transfer);
  count_end(isochronous ? state.sensor->depth.counts : state.sensor->color.counts, status);
  transfer->status = status;
  state.in_flight = false;
  state.cancelled = false;
  if (isochronous && status != LIBUSB_TRANSFER_COMPLETED) {
    for (int i = 0; i < transfer->num_iso_packets; ++i) {
      transfer->iso_packet_desc[i].actual_length = 0;
      transfer->iso_packet_desc[i].status = LIBUSB_TRANSFER_ERROR;
    }
  }
  done.push_back(transfer);
}

}  // namespace usb_kinect
