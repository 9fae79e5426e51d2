#include <arm_neon.h>

#include <cstdint>

#include "face_pipeline/haar/window_scan.hpp"
#include "face_pipeline/haar/window_scan_loop.hpp"

namespace halcyra::haar {
namespace {

// Eight lanes are two of the processor's vectors. So a stump's offsets, threshold and gain are read
// once for twice as many windows, and one instruction loads two vectors.

struct Floats {
  float32x4_t low;
  float32x4_t high;

  static Floats all(float value) { return {vdupq_n_f32(value), vdupq_n_f32(value)}; }
  static Floats load(const float* from) { return {vld1q_f32(from), vld1q_f32(from + 4)}; }
  void store(float* to) const {
    vst1q_f32(to, low);
    vst1q_f32(to + 4, high);
  }
  std::uint32_t at_most(float limit) const;
  friend Floats operator*(Floats a, Floats b) {
    return {vmulq_f32(a.low, b.low), vmulq_f32(a.high, b.high)};
  }
};

// A comparison's result: all bits of a lane are set where it holds.
struct Mask {
  uint32x4_t low;
  uint32x4_t high;

  // A bit for each lane, at every other place, so that those of even and odd windows interleave.
  std::uint32_t bits() const {
    constexpr std::uint32_t kLow[] = {1U, 1U << 2, 1U << 4, 1U << 6};
    constexpr std::uint32_t kHigh[] = {1U << 8, 1U << 10, 1U << 12, 1U << 14};
    return vaddvq_u32(
        vorrq_u32(vandq_u32(low, vld1q_u32(kLow)), vandq_u32(high, vld1q_u32(kHigh))));
  }
};

std::uint32_t Floats::at_most(float limit) const {
  return Mask{vcleq_f32(low, vdupq_n_f32(limit)), vcleq_f32(high, vdupq_n_f32(limit))}.bits();
}

struct Ints {
  int32x4_t low;
  int32x4_t high;

  static Ints all(std::int32_t value) { return {vdupq_n_s32(value), vdupq_n_s32(value)}; }
  static Ints load(const std::int32_t* from) {
    const int32x4x2_t both = vld1q_s32_x2(from);
    return {both.val[0], both.val[1]};
  }
  void store(std::int32_t* to) const {
    vst1q_s32(to, low);
    vst1q_s32(to + 4, high);
  }
  Floats floats() const { return {vcvtq_f32_s32(low), vcvtq_f32_s32(high)}; }
  void add_where_below(Floats value, float threshold, std::int32_t gain) {
    const float32x4_t thresholds = vdupq_n_f32(threshold);
    const int32x4_t gains = vdupq_n_s32(gain);
    const int32x4_t low_below = vreinterpretq_s32_u32(vcltq_f32(value.low, thresholds));
    const int32x4_t high_below = vreinterpretq_s32_u32(vcltq_f32(value.high, thresholds));
    low = vaddq_s32(low, vandq_s32(low_below, gains));
    high = vaddq_s32(high, vandq_s32(high_below, gains));
  }
  std::uint32_t below(std::int32_t limit) const {
    return Mask{vcltq_s32(low, vdupq_n_s32(limit)), vcltq_s32(high, vdupq_n_s32(limit))}.bits();
  }
  std::uint32_t above(std::int32_t limit) const {
    return Mask{vcgtq_s32(low, vdupq_n_s32(limit)), vcgtq_s32(high, vdupq_n_s32(limit))}.bits();
  }
  friend Ints operator+(Ints a, Ints b) {
    return {vaddq_s32(a.low, b.low), vaddq_s32(a.high, b.high)};
  }
  friend Ints operator-(Ints a, Ints b) {
    return {vsubq_s32(a.low, b.low), vsubq_s32(a.high, b.high)};
  }
};

struct Shorts {
  uint16x8_t low;
  uint16x8_t high;

  static Shorts all(std::int32_t value) {
    const uint16x8_t v = vdupq_n_u16(static_cast<std::uint16_t>(value));
    return {v, v};
  }
  static Shorts all_pairs(std::int32_t pair) {
    const uint16x8_t v = vreinterpretq_u16_s32(vdupq_n_s32(pair));
    return {v, v};
  }
  static Shorts load_in_parts(const std::uint16_t* from) { return load(from); }
  static Shorts load_aligned(const std::uint16_t* from) { return load(from); }
  static Shorts load(const std::int16_t* from) {
    return {as_unsigned(vld1q_s16(from)), as_unsigned(vld1q_s16(from + 8))};
  }
  void store(std::int16_t* to) const {
    vst1q_s16(to, as_signed(low));
    vst1q_s16(to + 8, as_signed(high));
  }
  static Shorts load(const std::uint16_t* from) {
    const uint16x8x2_t both = vld1q_u16_x2(from);
    return {both.val[0], both.val[1]};
  }
  // Times 2^16, which saves shifting the values down; the norms make up for it.
  Floats even_floats() const {
    return Ints{vshlq_n_s32(vreinterpretq_s32_u16(low), 16),
                vshlq_n_s32(vreinterpretq_s32_u16(high), 16)}
        .floats();
  }
  Floats odd_floats() const {
    const int32x4_t upper_half = vdupq_n_s32(-65536);
    return Ints{vandq_s32(vreinterpretq_s32_u16(low), upper_half),
                vandq_s32(vreinterpretq_s32_u16(high), upper_half)}
        .floats();
  }
  // Saturating.
  Shorts plus(Shorts other) const {
    return {as_unsigned(vqaddq_s16(as_signed(low), as_signed(other.low))),
            as_unsigned(vqaddq_s16(as_signed(high), as_signed(other.high)))};
  }
  Shorts minus(Shorts other) const {
    return {as_unsigned(vqsubq_s16(as_signed(low), as_signed(other.low))),
            as_unsigned(vqsubq_s16(as_signed(high), as_signed(other.high)))};
  }
  // Divided by 2^16, rounded down.
  Shorts times(Shorts factor) const {
    return {product(low, factor.low), product(high, factor.high)};
  }
  static uint16x8_t product(uint16x8_t a, uint16x8_t b) {
    return as_unsigned(vshrq_n_s16(vqdmulhq_s16(as_signed(a), as_signed(b)), 1));
  }
  void add_where_at_most(Shorts value, Shorts limit, Shorts gain) {
    const uint16x8_t low_gains = vcleq_s16(as_signed(value.low), as_signed(limit.low));
    const uint16x8_t high_gains = vcleq_s16(as_signed(value.high), as_signed(limit.high));
    low = vaddq_u16(low, vandq_u16(low_gains, gain.low));
    high = vaddq_u16(high, vandq_u16(high_gains, gain.high));
  }
  std::uint32_t above(std::int32_t limit) const {
    constexpr std::uint16_t kBits[] = {1, 2, 4, 8, 16, 32, 64, 128};
    const int16x8_t limits = vdupq_n_s16(static_cast<std::int16_t>(limit));
    const uint16x8_t bits = vld1q_u16(kBits);
    const std::uint32_t low_bits = vaddvq_u16(vandq_u16(vcgtq_s16(as_signed(low), limits), bits));
    const std::uint32_t high_bits = vaddvq_u16(vandq_u16(vcgtq_s16(as_signed(high), limits), bits));
    return low_bits | high_bits << 8;
  }
  static int16x8_t as_signed(uint16x8_t v) { return vreinterpretq_s16_u16(v); }
  static uint16x8_t as_unsigned(int16x8_t v) { return vreinterpretq_u16_s16(v); }
  friend Shorts operator+(Shorts a, Shorts b) {
    return {vaddq_u16(a.low, b.low), vaddq_u16(a.high, b.high)};
  }
  friend Shorts operator-(Shorts a, Shorts b) {
    return {vsubq_u16(a.low, b.low), vsubq_u16(a.high, b.high)};
  }
};

// Eight entries of each of eight windows.
struct Eights {
  static constexpr std::int32_t kWindows = 8;
  uint16x8_t v;

  // Of the first window.
  static Eights load(const std::uint16_t* base, const std::int32_t* places) {
    return {vld1q_u16(base + places[0])};
  }
  void store(std::uint16_t* to) const { vst1q_u16(to, v); }
  static Eights zip_low(Eights a, Eights b) { return {vzip1q_u16(a.v, b.v)}; }
  static Eights zip_high(Eights a, Eights b) { return {vzip2q_u16(a.v, b.v)}; }
};

struct NeonLanes {
  using Floats = halcyra::haar::Floats;
  using Ints = halcyra::haar::Ints;
  using Shorts = halcyra::haar::Shorts;
  using Eights = halcyra::haar::Eights;
  static constexpr std::int32_t kLanes = 8;

  // Turns the first and the second half of a group into its even and its odd windows.
  static void separate(Floats& first, Floats& second) {
    const Floats a = first;
    const Floats b = second;
    first = {vuzp1q_f32(a.low, a.high), vuzp1q_f32(b.low, b.high)};
    second = {vuzp2q_f32(a.low, a.high), vuzp2q_f32(b.low, b.high)};
  }
  static std::uint32_t interleave(std::uint32_t even, std::uint32_t odd) { return even | odd << 1; }
  static float32x2_t two_norms(int32x2_t sum, int32x2_t square_sum, double area) {
    const float64x2_t sums = vcvtq_f64_s64(vmovl_s32(sum));
    const float64x2_t squares = vmulq_n_f64(vcvtq_f64_s64(vmovl_s32(square_sum)), area);
    const float64x2_t contrast = vsubq_f64(squares, vmulq_f64(sums, sums));
    return vcvt_f32_f64(vdivq_f64(vdupq_n_f64(1.0), vsqrtq_f64(contrast)));
  }
  static float32x4_t four_norms(int32x4_t sum, int32x4_t square_sum, double area) {
    return vcombine_f32(two_norms(vget_low_s32(sum), vget_low_s32(square_sum), area),
                        two_norms(vget_high_s32(sum), vget_high_s32(square_sum), area));
  }
  static Floats contrast_norm(Ints sum, Ints square_sum, double area) {
    return {four_norms(sum.low, square_sum.low, area), four_norms(sum.high, square_sum.high, area)};
  }
  static uint16x8_t narrow(Floats norms, float unit) {
    const float32x4_t units = vdupq_n_f32(unit);
    return vreinterpretq_u16_s16(
        vcombine_s16(vqmovn_s32(vcvtnq_s32_f32(vdivq_f32(units, norms.low))),
                     vqmovn_s32(vcvtnq_s32_f32(vdivq_f32(units, norms.high)))));
  }
  static Shorts deviations(Floats first, Floats second, float unit) {
    return {narrow(first, unit), narrow(second, unit)};
  }
};

}  // namespace

void scan_windows_neon(const PlanView& plan, const LayerView& layer, const WindowRows& rows,
                       const ScanScratch& scratch) {
  WindowScanLoop<NeonLanes>::run(plan, layer, rows, scratch);
}

}  // namespace halcyra::haar
