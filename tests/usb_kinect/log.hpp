// What the sensor saw, one line for each event.
#pragma once

namespace usb_kinect {

struct Sensor;

// Writes "usb_kinect", the milliseconds since the first line, and the text.
[[gnu::format(printf, 1, 2)]] void note(const char* format, ...);

// Notes and counts something that a driver must not do; `sensor` may be null.
[[gnu::format(printf, 2, 3)]] void note_misuse(Sensor* sensor, const char* format, ...);

}  // namespace usb_kinect
