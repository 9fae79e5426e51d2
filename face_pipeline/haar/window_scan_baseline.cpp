#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "face_pipeline/haar/window_scan.hpp"
#include "face_pipeline/haar/window_scan_loop.hpp"

namespace halcyra::haar {
namespace {

// Vectors of 16 bytes, which g++ and clang know on every processor.
using EightShorts = std::uint16_t __attribute__((vector_size(16)));
using EightSigned = std::int16_t __attribute__((vector_size(16)));
using FourInts = std::int32_t __attribute__((vector_size(16)));
using FourUnsigned = std::uint32_t __attribute__((vector_size(16)));
using FourFloats = float __attribute__((vector_size(16)));
using TwoDoubles = double __attribute__((vector_size(16)));

template <class Vector>
Vector loaded(const void* from) {
  Vector vector;
  std::memcpy(&vector, from, sizeof(vector));
  return vector;
}

// A bit for each lane of a comparison's result.
std::uint32_t bits_of(FourInts mask) {
  const FourInts bits = mask & FourInts{1, 2, 4, 8};
  return static_cast<std::uint32_t>(bits[0] | bits[1] | bits[2] | bits[3]);
}

struct Floats {
  FourFloats v;

  static Floats all(float value) { return {FourFloats{value, value, value, value}}; }
  static Floats load(const float* from) { return {loaded<FourFloats>(from)}; }
  void store(float* to) const { std::memcpy(to, &v, sizeof(v)); }
  std::uint32_t at_most(float limit) const { return bits_of(v <= all(limit).v); }
  friend Floats operator*(Floats a, Floats b) { return {a.v * b.v}; }
};

struct Ints {
  FourUnsigned v;  // unsigned, as sums wrap around

  static FourInts all_signed(std::int32_t value) { return FourInts{value, value, value, value}; }
  static Ints all(std::int32_t value) {
    return {reinterpret_cast<FourUnsigned>(all_signed(value))};
  }
  static Ints load(const std::int32_t* from) { return {loaded<FourUnsigned>(from)}; }
  FourInts as_signed() const { return reinterpret_cast<FourInts>(v); }
  void store(std::int32_t* to) const { std::memcpy(to, &v, sizeof(v)); }
  Floats floats() const { return {__builtin_convertvector(as_signed(), FourFloats)}; }
  Floats low_half_floats() const { return Ints{v << 16}.floats(); }
  void add_where_below(Floats value, float threshold, std::int32_t gain) {
    const FourInts gains = (value.v < Floats::all(threshold).v) & all_signed(gain);
    v += reinterpret_cast<FourUnsigned>(gains);
  }
  std::uint32_t below(std::int32_t limit) const { return bits_of(as_signed() < all_signed(limit)); }
  std::uint32_t above(std::int32_t limit) const { return bits_of(as_signed() > all_signed(limit)); }
  friend Ints operator+(Ints a, Ints b) { return {a.v + b.v}; }
  friend Ints operator-(Ints a, Ints b) { return {a.v - b.v}; }
};

struct Shorts {
  EightShorts v;

  static Shorts all(std::int32_t value) {
    const auto v = static_cast<std::uint16_t>(value);
    return {EightShorts{v, v, v, v, v, v, v, v}};
  }
  static Shorts all_pairs(std::int32_t pair) {
    return {reinterpret_cast<EightShorts>(Ints::all(pair).v)};
  }
  static Shorts load(const void* from) { return {loaded<EightShorts>(from)}; }
  static Shorts load_in_parts(const void* from) { return load(from); }
  static Shorts load_aligned(const std::uint16_t* from) {
    return load(__builtin_assume_aligned(from, 16));
  }
  void store(void* to) const { std::memcpy(to, &v, sizeof(v)); }
  // Times 2^16, which saves shifting the values down; the norms make up for it.
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  Floats even_floats() const { return words().low_half_floats(); }
  Floats odd_floats() const { return upper_half_floats(); }
#else
  Floats even_floats() const { return upper_half_floats(); }
  Floats odd_floats() const { return words().low_half_floats(); }
#endif
  // Saturating.
#ifdef __SSE2__
  Shorts plus(Shorts other) const {
    return {reinterpret_cast<EightShorts>(_mm_adds_epi16(as_m128i(), other.as_m128i()))};
  }
  Shorts minus(Shorts other) const {
    return {reinterpret_cast<EightShorts>(_mm_subs_epi16(as_m128i(), other.as_m128i()))};
  }
  // Divided by 2^16, rounded down.
  Shorts times(Shorts factor) const {
    return {reinterpret_cast<EightShorts>(_mm_mulhi_epi16(as_m128i(), factor.as_m128i()))};
  }
  std::uint32_t above(std::int32_t limit) const {
    const __m128i mask = _mm_cmpgt_epi16(as_m128i(), all(limit).as_m128i());
    return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(mask, __m128i{})));
  }
#else
  Shorts plus(Shorts other) const {
    const EightShorts sum = v + other.v;
    return saturated(sum, (v ^ sum) & (other.v ^ sum));
  }
  Shorts minus(Shorts other) const {
    const EightShorts difference = v - other.v;
    return saturated(difference, (v ^ other.v) & (v ^ difference));
  }
  Shorts times(Shorts factor) const {
    using EightInts = std::int32_t __attribute__((vector_size(32)));
    const EightInts product = __builtin_convertvector(as_signed(), EightInts) *
                              __builtin_convertvector(factor.as_signed(), EightInts);
    return {__builtin_convertvector(product >> 16, EightShorts)};
  }
  std::uint32_t above(std::int32_t limit) const {
    const EightShorts mask = reinterpret_cast<EightShorts>(as_signed() > all(limit).as_signed());
    const EightShorts bits = mask & EightShorts{1, 2, 4, 8, 16, 32, 64, 128};
    std::uint32_t all_bits = 0;
    for (int i = 0; i < 8; ++i) all_bits |= bits[i];
    return all_bits;
  }
#endif
  void add_where_at_most(Shorts value, Shorts limit, Shorts gain) {
    v += reinterpret_cast<EightShorts>(value.as_signed() <= limit.as_signed()) & gain.v;
  }
  friend Shorts operator+(Shorts a, Shorts b) { return {a.v + b.v}; }
  friend Shorts operator-(Shorts a, Shorts b) { return {a.v - b.v}; }

 private:
#ifdef __SSE2__
  __m128i as_m128i() const { return reinterpret_cast<__m128i>(v); }
#else
  // The result where the sign bit of `overflow` is clear, otherwise the limit on the first
  // operand's side, which the result has left.
  static Shorts saturated(EightShorts result, EightShorts overflow) {
    const EightShorts wrong = -(overflow >> 15);
    const EightShorts limit = 0x7FFF + (1 - (result >> 15));
    return {(result & ~wrong) | (limit & wrong)};
  }
#endif
  EightSigned as_signed() const { return reinterpret_cast<EightSigned>(v); }
  Ints words() const { return {reinterpret_cast<FourUnsigned>(v)}; }
  Floats upper_half_floats() const { return Ints{words().v & 0xFFFF0000U}.floats(); }
};

// Eight entries of each of eight windows.
struct Eights {
  static constexpr std::int32_t kWindows = 8;
  EightShorts v;

  // Of the first window.
  static Eights load(const std::uint16_t* base, const std::int32_t* places) {
    return {loaded<EightShorts>(base + places[0])};
  }
  void store(std::uint16_t* to) const { std::memcpy(to, &v, sizeof(v)); }
  static Eights zip_low(Eights a, Eights b) {
    return {__builtin_shufflevector(a.v, b.v, 0, 8, 1, 9, 2, 10, 3, 11)};
  }
  static Eights zip_high(Eights a, Eights b) {
    return {__builtin_shufflevector(a.v, b.v, 4, 12, 5, 13, 6, 14, 7, 15)};
  }
};

struct BaselineLanes {
  using Floats = halcyra::haar::Floats;
  using Ints = halcyra::haar::Ints;
  using Shorts = halcyra::haar::Shorts;
  using Eights = halcyra::haar::Eights;
  static constexpr std::int32_t kLanes = 4;

  // Turns the first and the second half of a group into its even and its odd windows.
  static void separate(Floats& first, Floats& second) {
    const FourFloats a = first.v;
    const FourFloats b = second.v;
    first.v = FourFloats{a[0], a[2], b[0], b[2]};
    second.v = FourFloats{a[1], a[3], b[1], b[3]};
  }
  static std::uint32_t spread(std::uint32_t bits) {
    bits = (bits | bits << 2) & 0x33U;
    return (bits | bits << 1) & 0x55U;
  }
  static std::uint32_t interleave(std::uint32_t even, std::uint32_t odd) {
    return spread(even) | spread(odd) << 1;
  }
  static TwoDoubles norms(TwoDoubles sums, TwoDoubles square_sums, double area) {
    const TwoDoubles contrast = TwoDoubles{area, area} * square_sums - sums * sums;
#ifdef __SSE2__
    const auto roots =
        reinterpret_cast<TwoDoubles>(_mm_sqrt_pd(reinterpret_cast<__m128d>(contrast)));
#else
    const TwoDoubles roots = {__builtin_sqrt(contrast[0]), __builtin_sqrt(contrast[1])};
#endif
    return TwoDoubles{1.0, 1.0} / roots;
  }
  static Floats contrast_norm(Ints sum, Ints square_sum, double area) {
    const FourInts sums = sum.as_signed();
    const FourInts squares = square_sum.as_signed();
    const TwoDoubles low = norms(low_half(sums), low_half(squares), area);
    const TwoDoubles high = norms(high_half(sums), high_half(squares), area);
    return {__builtin_convertvector(__builtin_shufflevector(low, high, 0, 1, 2, 3), FourFloats)};
  }
  // Rounded to the nearest, as no deviation is negative.
  static Shorts deviations(Floats first, Floats second, float unit) {
    const auto whole = [unit](Floats norms) {
      return __builtin_convertvector(Floats::all(unit).v / norms.v + Floats::all(0.5F).v, FourInts);
    };
#ifdef __SSE2__
    return {reinterpret_cast<EightShorts>(_mm_packs_epi32(
        reinterpret_cast<__m128i>(whole(first)), reinterpret_cast<__m128i>(whole(second))))};
#else
    const FourInts a = whole(first);
    const FourInts b = whole(second);
    return {__builtin_convertvector(__builtin_shufflevector(a, b, 0, 1, 2, 3, 4, 5, 6, 7),
                                    EightShorts)};
#endif
  }
  static TwoDoubles low_half(FourInts v) {
    return __builtin_convertvector(__builtin_shufflevector(v, v, 0, 1), TwoDoubles);
  }
  static TwoDoubles high_half(FourInts v) {
    return __builtin_convertvector(__builtin_shufflevector(v, v, 2, 3), TwoDoubles);
  }
};

}  // namespace

void scan_windows_baseline(const PlanView& plan, const LayerView& layer, const WindowRows& rows,
                           const ScanScratch& scratch) {
  WindowScanLoop<BaselineLanes>::run(plan, layer, rows, scratch);
}

}  // namespace halcyra::haar
