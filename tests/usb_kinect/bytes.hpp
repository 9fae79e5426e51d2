// Numbers in the sensor's messages: little-endian, at any place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace usb_kinect {

using Bytes = std::vector<std::uint8_t>;

// The lowest eight bits.
template <typename Integer>
constexpr std::uint8_t byte(Integer value) {
  return static_cast<std::uint8_t>(value);
}

// `bytes` must be long enough for what is put at `place`.
inline void put16(Bytes& bytes, std::size_t place, std::uint32_t value) {
  bytes[place] = byte(value);
  bytes[place + 1] = byte(value >> 8);
}

inline void put32(Bytes& bytes, std::size_t place, std::uint32_t value) {
  put16(bytes, place, value);
  put16(bytes, place + 2, value >> 16);
}

inline void put_float(Bytes& bytes, std::size_t place, float value) {
  std::uint32_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  put32(bytes, place, bits);
}

inline std::uint32_t get32(const std::uint8_t* bytes) {
  std::uint32_t value = 0;
  for (int i = 3; i >= 0; --i) value = value << 8 | bytes[i];
  return value;
}

}  // namespace usb_kinect
