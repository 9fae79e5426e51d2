#include "virtual_kinect/frame_faults.hpp"

#include <cstddef>
#include <random>

namespace halcyra::virtual_kinect {

namespace {

using libfreenect2::Frame;

enum class Damage { kNoData, kNoWidth, kNoHeight, kTwoBytesPerPixel, kTorn };
constexpr std::uint64_t kDamageKinds = 5;

constexpr std::uint64_t kLossSeed = 0x10;
constexpr std::uint64_t kDamageSeed = 0x20;

// The finaliser of the SplitMix64 generator (Steele, Lea and Flood 2014): neighbouring inputs give
// unrelated outputs.
std::uint64_t mixed(std::uint64_t value) {
  value += 0x9E3779B97F4A7C15U;
  value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
  value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
  return value ^ (value >> 31U);
}

bool is_chosen(Frame::Type stream, std::uint64_t set, int percent, std::uint64_t seed) {
  const std::uint64_t stream_seed = mixed(seed + static_cast<std::uint64_t>(stream));
  return mixed(set ^ stream_seed) % 100 < static_cast<std::uint64_t>(percent);
}

void tear(Frame& frame, std::uint64_t set) {
  std::mt19937 bytes(static_cast<std::mt19937::result_type>(set));
  const std::size_t row = frame.width * frame.bytes_per_pixel;
  for (std::size_t i = frame.height / 2 * row; i < frame.height * row; ++i) {
    frame.data[i] = static_cast<unsigned char>(bytes());
  }
}

}  // namespace

bool is_lost(Frame::Type stream, std::uint64_t set, int percent) {
  return is_chosen(stream, set, percent, kLossSeed);
}

bool is_damaged(Frame::Type stream, std::uint64_t set, int percent) {
  return is_chosen(stream, set, percent, kDamageSeed);
}

void damage(Frame& frame, std::uint64_t set) {
  frame.status = 1;
  switch (static_cast<Damage>(set % kDamageKinds)) {
    case Damage::kNoData:
      frame.data = nullptr;
      break;
    case Damage::kNoWidth:
      frame.width = 0;
      break;
    case Damage::kNoHeight:
      frame.height = 0;
      break;
    case Damage::kTwoBytesPerPixel:
      frame.bytes_per_pixel = 2;
      break;
    case Damage::kTorn:
      if (frame.data != nullptr) tear(frame, set);
      break;
  }
}

}  // namespace halcyra::virtual_kinect
