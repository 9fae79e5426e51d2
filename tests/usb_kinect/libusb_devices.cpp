// libusb's functions for the library, the list of devices and their addresses.
#include <libusb.h>

#include <cstdlib>
#include <cstring>

#include "tests/usb_kinect/bus.hpp"
#include "tests/usb_kinect/libusb_exports.hpp"
#include "tests/usb_kinect/log.hpp"
#include "tests/usb_kinect/settings.hpp"

using usb_kinect::Bus;
using usb_kinect::bus;
using usb_kinect::Lock;
using usb_kinect::note;
using usb_kinect::note_misuse;
using usb_kinect::settings;

struct libusb_context {};

USB_KINECT_EXPORT int libusb_init(libusb_context** context) {
  if (settings().fail_open == "init") {
    note("init refused");
    return LIBUSB_ERROR_OTHER;
  }
  Bus& used = bus();
  const Lock lock(used.mutex);
  usb_kinect::report_at_end_of_this_process();
  ++used.contexts;
  note("init, %zu sensor(s) on the bus", used.sensors.size());
  if (context != nullptr) *context = new libusb_context;
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT void libusb_exit(libusb_context* context) {
  Bus& used = bus();
  Lock lock(used.mutex);
  usb_kinect::wait_for_scene(used, lock);
  --used.contexts;
  for (const auto& sensor : used.sensors) {
    if (sensor->color.queue.empty() && sensor->depth.queue.empty()) continue;
    note_misuse(sensor.get(), "exit with transfers in flight");
  }
  note("exit");
  delete context;
}

USB_KINECT_EXPORT ssize_t libusb_get_device_list(libusb_context* /*context*/,
                                                 libusb_device*** list) {
  Bus& used = bus();
  const Lock lock(used.mutex);
  std::vector<libusb_device*> found = {used.hub};
  for (const auto& sensor : used.sensors) {
    if (sensor->device->present && !sensor->gone_after_reset) found.push_back(sensor->device);
  }
  // Ends with a null pointer.
  *list = static_cast<libusb_device**>(std::calloc(found.size() + 1, sizeof(libusb_device*)));
  for (std::size_t i = 0; i < found.size(); ++i) (*list)[i] = libusb_ref_device(found[i]);
  ++used.lists;
  note("device list: %zu devices", found.size());
  return static_cast<ssize_t>(found.size());
}

USB_KINECT_EXPORT void libusb_free_device_list(libusb_device** list, int unreference) {
  if (list == nullptr) return;
  for (std::size_t i = 0; unreference != 0 && list[i] != nullptr; ++i) --list[i]->references;
  --bus().lists;
  std::free(list);
}

USB_KINECT_EXPORT libusb_device* libusb_ref_device(libusb_device* device) {
  ++device->references;
  return device;
}

USB_KINECT_EXPORT void libusb_unref_device(libusb_device* device) {
  if (device == nullptr || --device->references >= 1) return;
  note_misuse(device->sensor, "too many unreferences of a device");
}

USB_KINECT_EXPORT uint8_t libusb_get_bus_number(libusb_device* device) { return device->bus; }

USB_KINECT_EXPORT uint8_t libusb_get_device_address(libusb_device* device) {
  return device->address;
}

USB_KINECT_EXPORT uint8_t libusb_get_port_number(libusb_device* device) {
  return device->sensor != nullptr ? usb_kinect::byte(device->sensor->index + 1) : uint8_t{0};
}

USB_KINECT_EXPORT int libusb_get_device_speed(libusb_device* /*device*/) {
  return settings().fail_open == "usb2" ? LIBUSB_SPEED_HIGH : LIBUSB_SPEED_SUPER;
}
