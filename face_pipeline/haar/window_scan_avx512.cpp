#include <immintrin.h>

#include <cstdint>

#include "face_pipeline/haar/window_scan.hpp"
#include "face_pipeline/haar/window_scan_loop.hpp"

namespace halcyra::haar {
namespace {

struct Floats {
  __m512 v;

  static Floats all(float value) { return {_mm512_set1_ps(value)}; }
  static Floats load(const float* from) { return {_mm512_loadu_ps(from)}; }
  void store(float* to) const { _mm512_storeu_ps(to, v); }
  std::uint32_t at_most(float limit) const {
    return _mm512_cmp_ps_mask(v, _mm512_set1_ps(limit), _CMP_LE_OQ);
  }
  friend Floats operator*(Floats a, Floats b) { return {_mm512_mul_ps(a.v, b.v)}; }
};

struct Ints {
  __m512i v;

  static Ints all(std::int32_t value) { return {_mm512_set1_epi32(value)}; }
  static Ints load(const std::int32_t* from) { return {_mm512_loadu_si512(from)}; }
  void store(std::int32_t* to) const { _mm512_storeu_si512(to, v); }
  void add_where_below(Floats value, float threshold, std::int32_t gain) {
    const __mmask16 below = _mm512_cmp_ps_mask(value.v, _mm512_set1_ps(threshold), _CMP_LT_OQ);
    v = _mm512_mask_add_epi32(v, below, v, _mm512_set1_epi32(gain));
  }
  std::uint32_t below(std::int32_t limit) const {
    return _mm512_cmplt_epi32_mask(v, _mm512_set1_epi32(limit));
  }
  std::uint32_t above(std::int32_t limit) const {
    return _mm512_cmpgt_epi32_mask(v, _mm512_set1_epi32(limit));
  }
  friend Ints operator+(Ints a, Ints b) { return {_mm512_add_epi32(a.v, b.v)}; }
  friend Ints operator-(Ints a, Ints b) { return {_mm512_sub_epi32(a.v, b.v)}; }
};

struct Shorts {
  __m512i v;

  static Shorts all(std::int32_t value) {
    return {_mm512_set1_epi16(static_cast<std::int16_t>(value))};
  }
  static Shorts all_pairs(std::int32_t pair) { return {_mm512_set1_epi32(pair)}; }
  static Shorts load(const void* from) { return {_mm512_loadu_si512(from)}; }
  // A whole vector that is not aligned always crosses a line of the cache, a half only half of the
  // times.
  static Shorts load_in_parts(const std::uint16_t* from) {
    const auto half = [](const void* part) {
      return _mm256_loadu_si256(static_cast<const __m256i*>(part));
    };
    return {_mm512_inserti64x4(_mm512_castsi256_si512(half(from)), half(from + 16), 1)};
  }
  static Shorts load_aligned(const void* from) { return {_mm512_load_si512(from)}; }
  void store(void* to) const { _mm512_storeu_si512(to, v); }
  // Times 2^16, which saves shifting the values down; the norms make up for it.
  Floats even_floats() const { return {_mm512_cvtepi32_ps(_mm512_slli_epi32(v, 16))}; }
  Floats odd_floats() const {
    return {_mm512_cvtepi32_ps(_mm512_and_si512(v, _mm512_set1_epi32(-65536)))};
  }
  // Saturating.
  Shorts plus(Shorts other) const { return {_mm512_adds_epi16(v, other.v)}; }
  Shorts minus(Shorts other) const { return {_mm512_subs_epi16(v, other.v)}; }
  // Divided by 2^16, rounded down.
  Shorts times(Shorts factor) const { return {_mm512_mulhi_epi16(v, factor.v)}; }
  void add_where_at_most(Shorts value, Shorts limit, Shorts gain) {
    v = _mm512_mask_add_epi16(v, _mm512_cmple_epi16_mask(value.v, limit.v), v, gain.v);
  }
  std::uint32_t above(std::int32_t limit) const { return _mm512_cmpgt_epi16_mask(v, all(limit).v); }
  friend Shorts operator+(Shorts a, Shorts b) { return {_mm512_add_epi16(a.v, b.v)}; }
  friend Shorts operator-(Shorts a, Shorts b) { return {_mm512_sub_epi16(a.v, b.v)}; }
};

// Eight entries of each of two eights of windows. Whole vectors take longer to put together.
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

struct Avx512Lanes {
  using Floats = halcyra::haar::Floats;
  using Ints = halcyra::haar::Ints;
  using Shorts = halcyra::haar::Shorts;
  using Eights = halcyra::haar::Eights;
  static constexpr std::int32_t kLanes = 16;

  // Turns the first and the second half of a group into its even and its odd windows.
  static void separate(Floats& first, Floats& second) {
    const __m512i even =
        _mm512_set_epi32(30, 28, 26, 24, 22, 20, 18, 16, 14, 12, 10, 8, 6, 4, 2, 0);
    const __m512i odd = _mm512_add_epi32(even, _mm512_set1_epi32(1));
    const __m512 first_half = first.v;
    first.v = _mm512_permutex2var_ps(first_half, even, second.v);
    second.v = _mm512_permutex2var_ps(first_half, odd, second.v);
  }
  static std::uint32_t interleave(std::uint32_t even, std::uint32_t odd) {
    return _pdep_u32(even, 0x55555555U) | _pdep_u32(odd, 0xAAAAAAAAU);
  }
  static __m256 half_norm(__m256i sum, __m256i square_sum, double area) {
    const __m512d sums = _mm512_cvtepi32_pd(sum);
    const __m512d squares = _mm512_mul_pd(_mm512_set1_pd(area), _mm512_cvtepi32_pd(square_sum));
    const __m512d contrast = _mm512_sub_pd(squares, _mm512_mul_pd(sums, sums));
    return _mm512_cvtpd_ps(_mm512_div_pd(_mm512_set1_pd(1.0), _mm512_sqrt_pd(contrast)));
  }
  static Floats contrast_norm(Ints sum, Ints square_sum, double area) {
    const __m256 low =
        half_norm(_mm512_castsi512_si256(sum.v), _mm512_castsi512_si256(square_sum.v), area);
    const __m256 high = half_norm(_mm512_extracti64x4_epi64(sum.v, 1),
                                  _mm512_extracti64x4_epi64(square_sum.v, 1), area);
    return {_mm512_insertf32x8(_mm512_castps256_ps512(low), high, 1)};
  }
  static Shorts deviations(Floats first, Floats second, float unit) {
    const __m512 units = _mm512_set1_ps(unit);
    const auto narrow = [units](Floats norms) {
      return _mm512_cvtepi32_epi16(_mm512_cvtps_epi32(_mm512_div_ps(units, norms.v)));
    };
    return {_mm512_inserti64x4(_mm512_castsi256_si512(narrow(first)), narrow(second), 1)};
  }
};

}  // namespace

void scan_windows_avx512(const PlanView& plan, const LayerView& layer, const WindowRows& rows,
                         const ScanScratch& scratch) {
  WindowScanLoop<Avx512Lanes>::run(plan, layer, rows, scratch);
}

}  // namespace halcyra::haar
