#include <immintrin.h>

#include <cstdint>

#include "face_pipeline/haar/window_scan.hpp"
#include "face_pipeline/haar/window_scan_loop.hpp"

namespace halcyra::haar {
namespace {

std::uint32_t bits_of(__m256 mask) { return static_cast<std::uint32_t>(_mm256_movemask_ps(mask)); }

struct Floats {
  __m256 v;

  static Floats all(float value) { return {_mm256_set1_ps(value)}; }
  static Floats load(const float* from) { return {_mm256_loadu_ps(from)}; }
  void store(float* to) const { _mm256_storeu_ps(to, v); }
  std::uint32_t at_most(float limit) const {
    return bits_of(_mm256_cmp_ps(v, _mm256_set1_ps(limit), _CMP_LE_OQ));
  }
  friend Floats operator*(Floats a, Floats b) { return {_mm256_mul_ps(a.v, b.v)}; }
};

struct Ints {
  __m256i v;

  static Ints all(std::int32_t value) { return {_mm256_set1_epi32(value)}; }
  static Ints load(const void* from) {
    return {_mm256_loadu_si256(static_cast<const __m256i*>(from))};
  }
  void store(void* to) const { _mm256_storeu_si256(static_cast<__m256i*>(to), v); }
  void add_where_below(Floats value, float threshold, std::int32_t gain) {
    const __m256 below = _mm256_cmp_ps(value.v, _mm256_set1_ps(threshold), _CMP_LT_OQ);
    const __m256i gains = _mm256_and_si256(_mm256_castps_si256(below), _mm256_set1_epi32(gain));
    v = _mm256_add_epi32(v, gains);
  }
  std::uint32_t below(std::int32_t limit) const {
    return bits_of(_mm256_castsi256_ps(_mm256_cmpgt_epi32(_mm256_set1_epi32(limit), v)));
  }
  std::uint32_t above(std::int32_t limit) const {
    return bits_of(_mm256_castsi256_ps(_mm256_cmpgt_epi32(v, _mm256_set1_epi32(limit))));
  }
  friend Ints operator+(Ints a, Ints b) { return {_mm256_add_epi32(a.v, b.v)}; }
  friend Ints operator-(Ints a, Ints b) { return {_mm256_sub_epi32(a.v, b.v)}; }
};

struct Shorts {
  __m256i v;

  static Shorts all(std::int32_t value) {
    return {_mm256_set1_epi16(static_cast<std::int16_t>(value))};
  }
  static Shorts all_pairs(std::int32_t pair) { return {_mm256_set1_epi32(pair)}; }
  static Shorts load(const void* from) {
    return {_mm256_loadu_si256(static_cast<const __m256i*>(from))};
  }
  static Shorts load_in_parts(const void* from) { return load(from); }
  static Shorts load_aligned(const void* from) {
    return {_mm256_load_si256(static_cast<const __m256i*>(from))};
  }
  void store(void* to) const { _mm256_storeu_si256(static_cast<__m256i*>(to), v); }
  // Times 2^16, which saves shifting the values down; the norms make up for it.
  Floats even_floats() const { return {_mm256_cvtepi32_ps(_mm256_slli_epi32(v, 16))}; }
  Floats odd_floats() const {
    return {_mm256_cvtepi32_ps(_mm256_and_si256(v, _mm256_set1_epi32(-65536)))};
  }
  // Saturating.
  Shorts plus(Shorts other) const { return {_mm256_adds_epi16(v, other.v)}; }
  Shorts minus(Shorts other) const { return {_mm256_subs_epi16(v, other.v)}; }
  // Divided by 2^16, rounded down.
  Shorts times(Shorts factor) const { return {_mm256_mulhi_epi16(v, factor.v)}; }
  void add_where_at_most(Shorts value, Shorts limit, Shorts gain) {
    v = _mm256_add_epi16(v, _mm256_andnot_si256(_mm256_cmpgt_epi16(value.v, limit.v), gain.v));
  }
  std::uint32_t above(std::int32_t limit) const {
    const __m256i bytes = _mm256_cmpgt_epi16(v, all(limit).v);
    return _pext_u32(static_cast<std::uint32_t>(_mm256_movemask_epi8(bytes)), 0x55555555U);
  }
  friend Shorts operator+(Shorts a, Shorts b) { return {_mm256_add_epi16(a.v, b.v)}; }
  friend Shorts operator-(Shorts a, Shorts b) { return {_mm256_sub_epi16(a.v, b.v)}; }
};

// Eight entries of each of two eights of windows.
struct Eights {
  static constexpr std::int32_t kWindows = 16;
  __m256i v;

  // Of the first window of each eight.
  static Eights load(const std::uint16_t* base, const std::int32_t* places) {
    return {_mm256_inserti128_si256(_mm256_castsi128_si256(eight_entries(base + places[0])),
                                    eight_entries(base + places[8]), 1)};
  }
  static __m128i eight_entries(const void* from) {
    return _mm_loadu_si128(static_cast<const __m128i*>(from));
  }
  void store(void* to) const { _mm256_store_si256(static_cast<__m256i*>(to), v); }
  static Eights zip_low(Eights a, Eights b) { return {_mm256_unpacklo_epi16(a.v, b.v)}; }
  static Eights zip_high(Eights a, Eights b) { return {_mm256_unpackhi_epi16(a.v, b.v)}; }
};

struct Avx2Lanes {
  using Floats = halcyra::haar::Floats;
  using Ints = halcyra::haar::Ints;
  using Shorts = halcyra::haar::Shorts;
  using Eights = halcyra::haar::Eights;
  static constexpr std::int32_t kLanes = 8;

  // Turns the first and the second half of a group into its even and its odd windows.
  static void separate(Floats& first, Floats& second) {
    const __m256d even = _mm256_castps_pd(_mm256_shuffle_ps(first.v, second.v, 0x88));
    const __m256d odd = _mm256_castps_pd(_mm256_shuffle_ps(first.v, second.v, 0xDD));
    first.v = _mm256_castpd_ps(_mm256_permute4x64_pd(even, 0xD8));
    second.v = _mm256_castpd_ps(_mm256_permute4x64_pd(odd, 0xD8));
  }
  static std::uint32_t interleave(std::uint32_t even, std::uint32_t odd) {
    return _pdep_u32(even, 0x5555U) | _pdep_u32(odd, 0xAAAAU);
  }
  static __m128 half_norm(__m128i sum, __m128i square_sum, double area) {
    const __m256d sums = _mm256_cvtepi32_pd(sum);
    const __m256d squares = _mm256_mul_pd(_mm256_set1_pd(area), _mm256_cvtepi32_pd(square_sum));
    const __m256d contrast = _mm256_sub_pd(squares, _mm256_mul_pd(sums, sums));
    return _mm256_cvtpd_ps(_mm256_div_pd(_mm256_set1_pd(1.0), _mm256_sqrt_pd(contrast)));
  }
  static Floats contrast_norm(Ints sum, Ints square_sum, double area) {
    const __m128 low =
        half_norm(_mm256_castsi256_si128(sum.v), _mm256_castsi256_si128(square_sum.v), area);
    const __m128 high = half_norm(_mm256_extracti128_si256(sum.v, 1),
                                  _mm256_extracti128_si256(square_sum.v, 1), area);
    return {_mm256_set_m128(high, low)};
  }
  static Shorts deviations(Floats first, Floats second, float unit) {
    const __m256 units = _mm256_set1_ps(unit);
    const __m256i mixed = _mm256_packs_epi32(_mm256_cvtps_epi32(_mm256_div_ps(units, first.v)),
                                             _mm256_cvtps_epi32(_mm256_div_ps(units, second.v)));
    return {_mm256_permute4x64_epi64(mixed, 0xD8)};
  }
};

}  // namespace

void scan_windows_avx2(const PlanView& plan, const LayerView& layer, const WindowRows& rows,
                       const ScanScratch& scratch) {
  WindowScanLoop<Avx2Lanes>::run(plan, layer, rows, scratch);
}

}  // namespace halcyra::haar
