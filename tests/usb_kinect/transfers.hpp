// The asynchronous transfers that a driver has submitted.
#pragma once

#include <libusb.h>

#include <vector>

#include "tests/usb_kinect/clock.hpp"
#include "tests/usb_kinect/sensor.hpp"

namespace usb_kinect {

// What the bus knows of a transfer.
struct TransferState {
  bool in_flight = false;
  bool cancelled = false;
  bool has_deadline = false;
  Time deadline;
  Sensor* sensor = nullptr;
  libusb_device_handle* handle = nullptr;
};

using Transfers = std::vector<libusb_transfer*>;

// A transfer with room for `packets` isochronous packets, with its state in front of it.
libusb_transfer* allocate_transfer(int packets);
void free_transfer(libusb_transfer* transfer);

TransferState& state_of(libusb_transfer* transfer);

bool is_isochronous(const libusb_transfer& transfer);

// Ends a transfer that is no longer in its queue, and adds it to `done`, whose callbacks are due.
void finish(libusb_transfer* transfer, libusb_transfer_status status, Transfers& done);

// Ends every transfer of the queue for which `condition` holds.
template <typename Condition>
void finish_if(TransferQueue& queue, Condition condition, libusb_transfer_status status,
               Transfers& done) {
  for (auto place = queue.begin(); place != queue.end();) {
    libusb_transfer* const transfer = *place;
    if (condition(state_of(transfer))) {
      place = queue.erase(place);
      transfer->actual_length = 0;
      finish(transfer, status, done);
    } else {
      ++place;
    }
  }
}

}  // namespace usb_kinect
