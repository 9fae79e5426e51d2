// How this library offers libusb's functions in place of the ones of libusb itself.
#pragma once

#define USB_KINECT_EXPORT extern "C" __attribute__((visibility("default")))
