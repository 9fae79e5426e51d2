#include "tests/usb_kinect/answers.hpp"

#include <algorithm>
#include <cstdio>

#include "tests/usb_kinect/depth_codes.hpp"

namespace usb_kinect {

Bytes firmware_answer(const std::string& version) {
  unsigned int part[4] = {0, 0, 0, 0};
  std::sscanf(version.c_str(), "%u.%u.%u.%u", &part[0], &part[1], &part[2], &part[3]);
  // The versions of seven parts; the one of the whole is the fourth.
  constexpr std::uint32_t kParts = 7;
  constexpr std::uint32_t kWhole = 3;
  Bytes answer(0x200);
  for (std::uint32_t i = 0; i < kParts; ++i) {
    const bool whole = i == kWhole;
    put32(answer, i * 16, whole ? part[0] << 16 | (part[1] & 0xffff) : 1U << 16 | i);
    put32(answer, i * 16 + 4, whole ? part[2] : 100 + i);
    put32(answer, i * 16 + 8, whole ? part[3] : 0);
  }
  return answer;
}

Bytes serial_answer(const std::string& serial) {
  constexpr std::size_t kMost = 63;
  Bytes answer(0x80);
  for (std::size_t i = 0; i < std::min(serial.size(), kMost); ++i) answer[2 * i] = byte(serial[i]);
  return answer;
}

Bytes depth_lens_answer() {
  const Lens lens;
  const float values[] = {lens.fx, lens.fy, 0,       lens.cx, lens.cy,
                          lens.k1, lens.k2, lens.p1, lens.p2, lens.k3};
  Bytes answer(23 * 4);
  std::size_t place = 0;
  for (const float value : values) {
    put_float(answer, place, value);
    place += 4;
  }
  return answer;
}

Bytes phase_offsets_answer() {
  constexpr std::size_t kHeader = 32;
  constexpr std::size_t kTable = kDepthPixels * 2;
  constexpr std::size_t kTableWithFrame = kTable + 4;
  constexpr int kFrequencies = 3;
  Bytes answer(kHeader + kFrequencies * kTableWithFrame);
  put32(answer, 0, kHeader);
  put32(answer, 12, kTableWithFrame);
  for (int frequency = 0; frequency < kFrequencies; ++frequency) {
    std::size_t place = kHeader + static_cast<std::size_t>(frequency) * kTableWithFrame + 2;
    for (std::size_t pixel = 0; pixel < kDepthPixels; ++pixel) {
      const int column = static_cast<int>(pixel % kDepthWidth);
      put16(answer, place, phase_offset(frequency, column));
      place += 2;
    }
  }
  return answer;
}

Bytes color_lens_answer() {
  // Focal length, centre and two shifts; then a polynomial for x and one for y, whose terms are
  // xxx yyy xxy yyx xx yy xy x y 1.
  const float values[] = {
      1081.37F, 959.5F,  539.5F,  863.0F,   52.0F,                                              //
      0.0005F,  0.0001F, -5e-5F,  0.0006F,  0.0003F, 0.0001F, 0.002F,  0.64F,  -0.006F, 0.15F,  //
      0.00001F, 0.0009F, 0.0003F, 0.00001F, 0.001F,  0.0004F, 0.0002F, 0.006F, 0.64F,   0.015F};
  Bytes answer(1 + 25 * 4 + 28 * 23 * 5 * 4);
  answer[0] = 1;
  std::size_t place = 1;
  for (const float value : values) {
    put_float(answer, place, value);
    place += 4;
  }
  return answer;
}

}  // namespace usb_kinect
