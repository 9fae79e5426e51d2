// libusb's functions for open devices.
#include <libusb.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "tests/usb_kinect/bus.hpp"
#include "tests/usb_kinect/libusb_exports.hpp"
#include "tests/usb_kinect/log.hpp"
#include "tests/usb_kinect/settings.hpp"

using usb_kinect::Bus;
using usb_kinect::bus;
using usb_kinect::Lock;
using usb_kinect::note;
using usb_kinect::note_misuse;
using usb_kinect::Sensor;
using usb_kinect::settings;
using usb_kinect::TransferQueue;

namespace {

constexpr int kInterfaces = 2;
constexpr int kDepthInterface = 1;

bool is_gone(libusb_device_handle* handle) { return !handle->device->present; }

// -1 for the root hub, in the log.
int index_of(libusb_device_handle* handle) {
  return handle->device->sensor != nullptr ? handle->device->sensor->index : -1;
}

int open_error(const Sensor& sensor) {
  const std::string& fault = settings().fail_open;
  if (fault == "permission") return LIBUSB_ERROR_ACCESS;
  // The first open is the enumeration's.
  if (fault == "open" && sensor.opens > 1) return LIBUSB_ERROR_ACCESS;
  if (fault == "open-retry" && sensor.opens > 1 && sensor.opens <= 4) return LIBUSB_ERROR_BUSY;
  return LIBUSB_SUCCESS;
}

void drop_transfers(Sensor& sensor, const libusb_device_handle* handle) {
  for (TransferQueue* const queue : {&sensor.color.queue, &sensor.depth.queue}) {
    const auto of_handle = [&](libusb_transfer* transfer) {
      usb_kinect::TransferState& state = usb_kinect::state_of(transfer);
      if (state.handle != handle) return false;
      note_misuse(&sensor, "handle closed with a transfer in flight");
      state.in_flight = false;
      return true;
    };
    queue->erase(std::remove_if(queue->begin(), queue->end(), of_handle), queue->end());
  }
}

}  // namespace

USB_KINECT_EXPORT int libusb_open(libusb_device* device, libusb_device_handle** result) {
  Bus& used = bus();
  const Lock lock(used.mutex);
  Sensor* const sensor = device->sensor;
  if (!device->present || (sensor != nullptr && sensor->gone_after_reset)) {
    return LIBUSB_ERROR_NO_DEVICE;
  }
  if (sensor != nullptr) {
    ++sensor->opens;
    const int error = open_error(*sensor);
    note("device=%d open -> %d", sensor->index, error);
    if (error != LIBUSB_SUCCESS) return error;
    usb_kinect::prepare_scene(used);
  }
  libusb_device_handle* const handle = new libusb_device_handle;
  handle->device = libusb_ref_device(device);
  ++used.handles;
  *result = handle;
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT void libusb_close(libusb_device_handle* handle) {
  if (handle == nullptr) return;
  Bus& used = bus();
  const Lock lock(used.mutex);
  if (Sensor* const sensor = handle->device->sensor) {
    drop_transfers(*sensor, handle);
    note("device=%d close", sensor->index);
  }
  --handle->device->references;
  --used.handles;
  delete handle;
}

USB_KINECT_EXPORT libusb_device* libusb_get_device(libusb_device_handle* handle) {
  return handle->device;
}

USB_KINECT_EXPORT int libusb_get_string_descriptor_ascii(libusb_device_handle* handle,
                                                         uint8_t index, unsigned char* data,
                                                         int length) {
  const Sensor* const sensor = handle->device->sensor;
  if (sensor == nullptr || is_gone(handle)) return LIBUSB_ERROR_NO_DEVICE;
  if (index < 1 || index > 3) return LIBUSB_ERROR_INVALID_PARAM;
  if (index == 3 && settings().fail_open == "serial") return LIBUSB_ERROR_PIPE;
  const std::string texts[] = {"Microsoft", "Xbox NUI Sensor", sensor->serial};
  const std::string text = texts[index - 1].substr(0, static_cast<std::size_t>(length - 1));
  std::memcpy(data, text.c_str(), text.size() + 1);
  return static_cast<int>(text.size());
}

USB_KINECT_EXPORT int libusb_reset_device(libusb_device_handle* handle) {
  Bus& used = bus();
  const Lock lock(used.mutex);
  Sensor* const sensor = handle->device->sensor;
  if (is_gone(handle)) return LIBUSB_ERROR_NO_DEVICE;
  if (sensor == nullptr) return LIBUSB_SUCCESS;
  note("device=%d reset", sensor->index);
  usb_kinect::end_streams(*sensor);
  sensor->answers.clear();
  sensor->alternate_setting = 0;
  const std::string& fault = settings().fail_open;
  if (fault == "reset") return LIBUSB_ERROR_OTHER;
  if (fault == "reset-gone") {
    sensor->gone_after_reset = true;
    return LIBUSB_ERROR_NOT_FOUND;
  }
  if (fault == "reset-again") {
    handle->device->present = false;
    sensor->device = usb_kinect::attach(used, *sensor);
    return LIBUSB_ERROR_NOT_FOUND;
  }
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT int libusb_get_configuration(libusb_device_handle* handle, int* value) {
  if (is_gone(handle)) return LIBUSB_ERROR_NO_DEVICE;
  if (settings().fail_open == "configuration") return LIBUSB_ERROR_IO;
  *value = 1;
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT int libusb_set_configuration(libusb_device_handle* handle, int value) {
  if (is_gone(handle)) return LIBUSB_ERROR_NO_DEVICE;
  return value == 1 ? LIBUSB_SUCCESS : LIBUSB_ERROR_NOT_FOUND;
}

USB_KINECT_EXPORT int libusb_claim_interface(libusb_device_handle* handle, int number) {
  const Lock lock(bus().mutex);
  if (is_gone(handle)) return LIBUSB_ERROR_NO_DEVICE;
  if (number < 0 || number >= kInterfaces) return LIBUSB_ERROR_NOT_FOUND;
  if (settings().fail_open == "claim") return LIBUSB_ERROR_BUSY;
  handle->claimed[number] = true;
  note("device=%d claim interface %d", index_of(handle), number);
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT int libusb_release_interface(libusb_device_handle* handle, int number) {
  const Lock lock(bus().mutex);
  if (number < 0 || number >= kInterfaces || !handle->claimed[number]) {
    return LIBUSB_ERROR_NOT_FOUND;
  }
  handle->claimed[number] = false;
  if (is_gone(handle)) return LIBUSB_ERROR_NO_DEVICE;
  note("device=%d release interface %d", index_of(handle), number);
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT int libusb_set_interface_alt_setting(libusb_device_handle* handle, int number,
                                                       int setting) {
  const Lock lock(bus().mutex);
  Sensor* const sensor = handle->device->sensor;
  if (is_gone(handle)) return LIBUSB_ERROR_NO_DEVICE;
  if (number < 0 || number >= kInterfaces || !handle->claimed[number]) {
    return LIBUSB_ERROR_NOT_FOUND;
  }
  if (number != kDepthInterface || sensor == nullptr) return LIBUSB_SUCCESS;
  if (setting == 1 && settings().fail_start == "alt") return LIBUSB_ERROR_IO;
  sensor->alternate_setting = setting;
  note("device=%d interface 1 alternate setting %d", sensor->index, setting);
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT int libusb_kernel_driver_active(libusb_device_handle* /*handle*/,
                                                  int /*number*/) {
  return 0;
}

USB_KINECT_EXPORT int libusb_set_auto_detach_kernel_driver(libusb_device_handle* /*handle*/,
                                                           int /*enable*/) {
  return LIBUSB_SUCCESS;
}
