#include "tests/usb_kinect/depth_codes.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace usb_kinect {
namespace {

constexpr double kPi = 3.14159265358979323846;

// The sensor measures with three modulation frequencies, each at three phase shifts.
constexpr int kFrequencies = 3;
constexpr int kShifts = 3;
constexpr double kShift[kShifts] = {0.0, 2.094395, 4.18879};

// In units in which the combined measurement repeats after 30, the frequencies repeat after these.
constexpr double kPeriod[kFrequencies] = {3.0, 15.0, 2.0};
constexpr double kCombinedPeriod = 30.0;

// Gain that the reader applies to each frequency.
constexpr double kGain[kFrequencies] = {1.322581, 1.0, 1.612903};
constexpr double kUnambiguousMm = 6250.0 / 3.0;
constexpr double kPhaseOffsetUnit = 0.000031;

constexpr double kSaturation = 65535.0;
constexpr std::uint16_t kSaturatedCode = 1024;
constexpr std::size_t kRowBytes = std::size_t{kDepthWidth} * 11 / 8;

using Phases = std::array<double, kFrequencies>;

// A signed code of 11 bits. 0 to 1023 are values from 0 on, in steps that double every 128 codes
// from the third group on; 1025 to 2047 are their negatives; 1024 says "saturated".
class CodeTable {
 public:
  CodeTable() : code_(kMost + 1) {
    std::vector<int> value(kCodes);
    int next = 0;
    for (int code = 0; code < kCodes; ++code) {
      value[index(code)] = next;
      const int group = code / 128;
      next += group < 2 ? 1 : 1 << (group - 1);
    }
    int code = 0;
    for (int magnitude = 0; magnitude <= kMost; ++magnitude) {
      while (code + 1 < kCodes && std::abs(value[index(code + 1)] - magnitude) <=
                                      std::abs(value[index(code)] - magnitude)) {
        ++code;
      }
      code_[index(magnitude)] = static_cast<std::uint16_t>(code);
    }
  }

  std::uint16_t of(double value) const {
    const int magnitude = static_cast<int>(std::floor(std::fabs(value) + 0.5));
    const std::uint16_t code = code_[index(std::min(magnitude, kMost))];
    if (value >= 0 || code == 0) return code;
    return static_cast<std::uint16_t>(code + kCodes);
  }

 private:
  static constexpr int kCodes = 1024;
  static constexpr int kMost = 16383;
  static std::size_t index(int value) { return static_cast<std::size_t>(value); }

  std::vector<std::uint16_t> code_;  // by magnitude
};

// Radius on the undistorted unit plane for a radius on the distorted one, by Newton's method.
double undistorted_radius(double distorted, const Lens& lens) {
  const double k1 = static_cast<double>(lens.k1);
  const double k2 = static_cast<double>(lens.k2);
  const double k3 = static_cast<double>(lens.k3);
  double radius = distorted;
  for (int i = 0; i < 50; ++i) {
    const double square = radius * radius;
    const double error = radius * (1 + square * (k1 + square * (k2 + square * k3))) - distorted;
    const double slope = 1 + square * (3 * k1 + square * (5 * k2 + square * 7 * k3));
    const double step = error / slope;
    radius -= step;
    if (std::fabs(step) < 1e-13) break;
  }
  return radius;
}

// The columns of a row are interleaved: 0, 4, 8, ... then 1, 5, 9, ...
void put_code(std::uint8_t* row, int column, std::uint16_t code) {
  const int bit = 11 * ((column >> 2) + ((column & 3) << 7));
  const std::uint32_t shifted = std::uint32_t{code} << (bit & 7);
  std::uint8_t* const place = row + (bit >> 3);
  place[0] = byte(place[0] | shifted);
  place[1] = byte(place[1] | shifted >> 8);
  if ((shifted >> 16) != 0) place[2] = byte(place[2] | shifted >> 16);
}

// The phase at each frequency of light that comes back from `depth` mm at a pixel.
Phases phases_of(double depth, int column, int sensor_row, const Lens& lens) {
  const double x = (column + 0.5 - static_cast<double>(lens.cx)) / static_cast<double>(lens.fx);
  const double y = (sensor_row + 0.5 - static_cast<double>(lens.cy)) / static_cast<double>(lens.fy);
  const double distorted = std::sqrt(x * x + y * y);
  const double radius = distorted > 0 ? undistorted_radius(distorted, lens) : 0;
  const double undistorted_x = distorted > 0 ? x * radius / distorted : 0;
  const double scale = kUnambiguousMm / std::sqrt(radius * radius + 1);
  // The lamp stands 90 mm beside the camera, so depth = scale * p / (1 - scale * offset / p). That
  // is solved for p.
  const double offset = undistorted_x * 90.0 / (4.0 * 2083.333 * 2083.333);
  const double root = depth * depth - 4 * scale * scale * offset * depth;
  const double p = root > 0 ? (depth + std::sqrt(root)) / (2 * scale) : depth / scale;
  const double combined = std::fmod(p / 0.3, kCombinedPeriod);
  Phases result{};
  for (std::size_t f = 0; f < result.size(); ++f) {
    result[f] = 2 * kPi * std::fmod(combined, kPeriod[f]) / kPeriod[f];
  }
  return result;
}

// Cosine and sine of each column's phase offset plus the shift, by frequency and shift.
struct ShiftedOffsets {
  ShiftedOffsets() {
    for (std::size_t sub = 0; sub < cosine.size(); ++sub) {
      const int frequency = static_cast<int>(sub) / kShifts;
      for (int column = 0; column < kDepthWidth; ++column) {
        const double angle =
            -static_cast<double>(phase_offset(frequency, column)) * kPhaseOffsetUnit * kPi +
            kShift[sub % kShifts];
        cosine[sub].push_back(std::cos(angle));
        sine[sub].push_back(std::sin(angle));
      }
    }
  }

  std::array<std::vector<double>, kFrequencies * kShifts> cosine;
  std::array<std::vector<double>, kFrequencies * kShifts> sine;
};

// Writes the codes of one pixel into the nine sub-images that hold measurements.
class PixelWriter {
 public:
  PixelWriter(Bytes& frame, int sensor_row) : frame_(frame) {
    // The rows of a sub-image lie from the middle outwards.
    constexpr int kHalf = kDepthHeight / 2;
    const int stored = sensor_row < kHalf ? sensor_row + kHalf : kDepthHeight - 1 - sensor_row;
    row_ = static_cast<std::size_t>(stored) * kRowBytes;
  }

  void saturated(int column) {
    for (std::size_t sub = 0; sub < kFrequencies * kShifts; ++sub) put(sub, column, kSaturatedCode);
  }

  void measured(int column, double infrared, const Phases& phases) {
    static const CodeTable kTable;
    static const ShiftedOffsets kOffsets;
    const auto at = static_cast<std::size_t>(column);
    for (std::size_t sub = 0; sub < kFrequencies * kShifts; ++sub) {
      const std::size_t frequency = sub / kShifts;
      const double amplitude = infrared / 16.0 / kGain[frequency];
      const double value = amplitude * (kOffsets.cosine[sub][at] * std::cos(phases[frequency]) -
                                        kOffsets.sine[sub][at] * std::sin(phases[frequency]));
      put(sub, column, kTable.of(value));
    }
  }

 private:
  void put(std::size_t sub, int column, std::uint16_t code) {
    put_code(&frame_[kSubImageBytes * sub + row_], column, code);
  }

  Bytes& frame_;
  std::size_t row_;
};

}  // namespace

std::uint16_t phase_offset(int frequency, int column) {
  static constexpr int kBase[kFrequencies] = {0x2c9a, 0x08ec, 0x42e8};
  return static_cast<std::uint16_t>(kBase[frequency] + (frequency + 1) * column / 2);
}

DepthPicture plane(double middle_mm, double slope_mm, double infrared_level) {
  DepthPicture result;
  std::size_t i = 0;
  for (int y = 0; y < kDepthHeight; ++y) {
    for (int x = 0; x < kDepthWidth; ++x, ++i) {
      result.depth[i] = static_cast<float>(middle_mm + slope_mm * ((x + 0.5) / kDepthWidth - 0.5));
      result.infrared[i] =
          static_cast<float>(infrared_level * (0.5 + 0.5 * (y + 0.5) / kDepthHeight));
    }
  }
  return result;
}

Bytes encode_depth(const DepthPicture& picture, const Lens& lens) {
  // Light without a distance: three phases that contradict each other.
  const Phases kContradiction = {kPi, 0, kPi};
  Bytes frame(kSubImageBytes * kSubImages);
  for (int row = 0; row < kDepthHeight; ++row) {
    const int sensor_row = kDepthHeight - 1 - row;
    PixelWriter pixel(frame, sensor_row);
    for (int column = 1; column < kDepthWidth - 1; ++column) {
      const auto i = static_cast<std::size_t>(row) * kDepthWidth + static_cast<std::size_t>(column);
      const double infrared = static_cast<double>(picture.infrared[i]);
      const double depth = static_cast<double>(picture.depth[i]);
      if (infrared >= kSaturation) {
        pixel.saturated(column);
      } else if (infrared > 0) {
        pixel.measured(column, infrared,
                       depth > 0 ? phases_of(depth, column, sensor_row, lens) : kContradiction);
      }
    }
  }
  return frame;
}

}  // namespace usb_kinect
