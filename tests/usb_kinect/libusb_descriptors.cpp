// libusb's functions for descriptors.
#include <libusb.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "tests/usb_kinect/color_stream.hpp"
#include "tests/usb_kinect/commands.hpp"
#include "tests/usb_kinect/depth_stream.hpp"
#include "tests/usb_kinect/libusb_exports.hpp"
#include "tests/usb_kinect/settings.hpp"

using usb_kinect::byte;
using usb_kinect::kIsochronousPacket;

namespace {

constexpr std::uint16_t kUsb2Packet = 1024;
constexpr int kCompanionBytes = 6;

bool at_usb2_port() { return usb_kinect::settings().fail_open == "usb2"; }

// A configuration with everything that it points to.
struct Configuration {
  std::uint8_t companion[5][kCompanionBytes];
  libusb_endpoint_descriptor control_endpoints[4];
  libusb_endpoint_descriptor depth_endpoint;
  libusb_interface_descriptor control;
  libusb_interface_descriptor depth[2];
  libusb_interface interfaces[2];
  libusb_config_descriptor descriptor;
};

struct Burst {
  std::uint8_t most = 0;      // bMaxBurst
  std::uint8_t multiple = 0;  // bmAttributes
  std::uint16_t bytes = 0;    // wBytesPerInterval
};

libusb_endpoint_descriptor endpoint(std::uint8_t (&companion)[kCompanionBytes],
                                    std::uint8_t address, std::uint8_t type,
                                    std::uint16_t packet_size, std::uint8_t interval, Burst burst) {
  const std::uint8_t content[kCompanionBytes] = {kCompanionBytes,   LIBUSB_DT_SS_ENDPOINT_COMPANION,
                                                 burst.most,        burst.multiple,
                                                 byte(burst.bytes), byte(burst.bytes >> 8)};
  std::memcpy(companion, content, sizeof content);
  libusb_endpoint_descriptor result = {};
  result.bLength = LIBUSB_DT_ENDPOINT_SIZE;
  result.bDescriptorType = LIBUSB_DT_ENDPOINT;
  result.bEndpointAddress = address;
  result.bmAttributes = type;
  result.wMaxPacketSize = packet_size;
  result.bInterval = interval;
  result.extra = companion;
  result.extra_length = kCompanionBytes;
  return result;
}

libusb_interface_descriptor interface_of(std::uint8_t number, std::uint8_t alternate_setting,
                                         const libusb_endpoint_descriptor* endpoints,
                                         std::uint8_t count) {
  libusb_interface_descriptor result = {};
  result.bLength = LIBUSB_DT_INTERFACE_SIZE;
  result.bDescriptorType = LIBUSB_DT_INTERFACE;
  result.bInterfaceNumber = number;
  result.bAlternateSetting = alternate_setting;
  result.bNumEndpoints = count;
  result.bInterfaceClass = LIBUSB_CLASS_VENDOR_SPEC;
  result.endpoint = endpoints;
  return result;
}

void add_endpoints(Configuration& result) {
  const bool usb2 = at_usb2_port();
  const std::uint16_t bulk_packet = usb2 ? 512 : 1024;
  constexpr std::uint8_t kBulk = LIBUSB_TRANSFER_TYPE_BULK;
  constexpr std::uint8_t kInterruptEndpoint = 0x82;
  result.control_endpoints[0] =
      endpoint(result.companion[0], usb_kinect::kAnswerEndpoint, kBulk, bulk_packet, 0, {});
  result.control_endpoints[1] =
      endpoint(result.companion[1], usb_kinect::kCommandEndpoint, kBulk, bulk_packet, 0, {});
  result.control_endpoints[2] =
      endpoint(result.companion[2], usb_kinect::kColorEndpoint, kBulk, bulk_packet, 0, {15, 0, 0});
  result.control_endpoints[3] = endpoint(result.companion[3], kInterruptEndpoint,
                                         LIBUSB_TRANSFER_TYPE_INTERRUPT, 16, 4, {0, 0, 16});
  const Burst burst = usb2 ? Burst{0, 0, kUsb2Packet} : Burst{10, 2, kIsochronousPacket};
  result.depth_endpoint = endpoint(result.companion[4], usb_kinect::kDepthEndpoint,
                                   LIBUSB_TRANSFER_TYPE_ISOCHRONOUS, 1024, 1, burst);
}

}  // namespace

USB_KINECT_EXPORT int libusb_get_device_descriptor(libusb_device* device,
                                                   libusb_device_descriptor* result) {
  const bool is_sensor = device->sensor != nullptr;
  *result = {};
  result->bLength = LIBUSB_DT_DEVICE_SIZE;
  result->bDescriptorType = LIBUSB_DT_DEVICE;
  result->bcdUSB = 0x0300;
  result->bMaxPacketSize0 = 9;
  result->bNumConfigurations = 1;
  result->idVendor = is_sensor ? 0x045e : 0x1d6b;
  result->idProduct = is_sensor ? 0x02d8 : 0x0003;
  result->bDeviceClass = is_sensor ? 0xef : byte(LIBUSB_CLASS_HUB);
  result->bcdDevice = 0x0100;
  if (is_sensor) {
    result->iManufacturer = 1;
    result->iProduct = 2;
    result->iSerialNumber = 3;
  }
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT int libusb_get_config_descriptor_by_value(libusb_device* device, uint8_t value,
                                                            libusb_config_descriptor** result) {
  if (device->sensor == nullptr || value != 1) return LIBUSB_ERROR_NOT_FOUND;
  Configuration* const all = static_cast<Configuration*>(std::calloc(1, sizeof(Configuration)));
  add_endpoints(*all);
  all->control = interface_of(0, 0, all->control_endpoints, 4);
  all->depth[0] = interface_of(1, 0, nullptr, 0);
  all->depth[1] = interface_of(1, 1, &all->depth_endpoint, 1);
  all->interfaces[0] = {&all->control, 1};
  all->interfaces[1] = {all->depth, 2};
  all->descriptor.bLength = LIBUSB_DT_CONFIG_SIZE;
  all->descriptor.bDescriptorType = LIBUSB_DT_CONFIG;
  all->descriptor.bNumInterfaces = 2;
  all->descriptor.bConfigurationValue = 1;
  all->descriptor.bmAttributes = 0xc0;
  all->descriptor.interface = all->interfaces;
  *result = &all->descriptor;
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT void libusb_free_config_descriptor(libusb_config_descriptor* descriptor) {
  if (descriptor == nullptr) return;
  std::free(reinterpret_cast<char*>(descriptor) - offsetof(Configuration, descriptor));
}

USB_KINECT_EXPORT int libusb_get_ss_endpoint_companion_descriptor(
    libusb_context* /*context*/, const libusb_endpoint_descriptor* endpoint,
    libusb_ss_endpoint_companion_descriptor** result) {
  const unsigned char* const bytes = endpoint->extra;
  if (bytes == nullptr || endpoint->extra_length < kCompanionBytes) return LIBUSB_ERROR_NOT_FOUND;
  auto* const companion = static_cast<libusb_ss_endpoint_companion_descriptor*>(
      std::calloc(1, sizeof(libusb_ss_endpoint_companion_descriptor)));
  companion->bLength = bytes[0];
  companion->bDescriptorType = bytes[1];
  companion->bMaxBurst = bytes[2];
  companion->bmAttributes = bytes[3];
  companion->wBytesPerInterval = static_cast<std::uint16_t>(bytes[4] | bytes[5] << 8);
  *result = companion;
  return LIBUSB_SUCCESS;
}

USB_KINECT_EXPORT void libusb_free_ss_endpoint_companion_descriptor(
    libusb_ss_endpoint_companion_descriptor* companion) {
  std::free(companion);
}

USB_KINECT_EXPORT int libusb_get_max_iso_packet_size(libusb_device* device,
                                                     unsigned char endpoint) {
  if (device->sensor == nullptr || endpoint != usb_kinect::kDepthEndpoint) {
    return LIBUSB_ERROR_NOT_FOUND;
  }
  return at_usb2_port() ? kUsb2Packet : static_cast<int>(kIsochronousPacket);
}
