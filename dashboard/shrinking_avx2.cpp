#include <immintrin.h>

#include <cstdint>

#include "dashboard/shrinking_loop.hpp"

namespace halcyra {
namespace {

// The bytes of the pixel at `byte` go to the lowest bytes of three lanes of 32 bits; the fourth is
// 0. The same in both halves of the vector.
__m256i pixel_at(char byte) {
  const char b = byte;
  const char g = static_cast<char>(byte + 1);
  const char r = static_cast<char>(byte + 2);
  constexpr char kZero = -1;
  return _mm256_broadcastsi128_si256(_mm_setr_epi8(b, kZero, kZero, kZero, g, kZero, kZero, kZero,
                                                   r, kZero, kZero, kZero, kZero, kZero, kZero,
                                                   kZero));
}

__m128i loaded(const std::uint8_t* from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

void store_pixels(__m256i bytes, __m256i pixel, float* to) {
  _mm256_storeu_ps(to, _mm256_cvtepi32_ps(_mm256_shuffle_epi8(bytes, pixel)));
}

// Pixels of two rows side by side, four floats each.
struct Lanes {
  using Floats = float __attribute__((vector_size(32)));
  using Ints = std::int32_t __attribute__((vector_size(32)));
  using Pixels = Floats;

  static constexpr std::int32_t kRows = 2;
  static constexpr std::int32_t kStride = 8;

  static void widen(const std::uint8_t* const* rows, std::int32_t pixels, float* to) {
    std::int32_t i = 0;
    // Four pixels are 12 bytes, but 16 are read.
    for (; i + 6 <= pixels; i += 4) {
      const __m256i bytes = _mm256_set_m128i(loaded(rows[1] + 3 * i), loaded(rows[0] + 3 * i));
      store_pixels(bytes, pixel_at(0), to + kStride * i);
      store_pixels(bytes, pixel_at(3), to + kStride * (i + 1));
      store_pixels(bytes, pixel_at(6), to + kStride * (i + 2));
      store_pixels(bytes, pixel_at(9), to + kStride * (i + 3));
    }
    for (; i < pixels; ++i) {
      for (std::int32_t channel = 0; channel < 3; ++channel) {
        to[kStride * i + channel] = rows[0][3 * i + channel];
        to[kStride * i + 4 + channel] = rows[1][3 * i + channel];
      }
    }
  }

  static void store(Pixels sum, float* const* sums, std::int32_t at) {
    _mm_storeu_ps(sums[0] + at, _mm256_castps256_ps128(sum));
    _mm_storeu_ps(sums[1] + at, _mm256_extractf128_ps(sum, 1));
  }

  static void narrow(Ints a, Ints b, Ints c, Ints d, std::uint8_t* to) {
    const __m256i low =
        _mm256_packs_epi32(reinterpret_cast<__m256i>(a), reinterpret_cast<__m256i>(b));
    const __m256i high =
        _mm256_packs_epi32(reinterpret_cast<__m256i>(c), reinterpret_cast<__m256i>(d));
    // Packing works on each half of the vectors, so fours of bytes are out of order.
    const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    const __m256i bytes = _mm256_permutevar8x32_epi32(_mm256_packus_epi16(low, high), order);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), bytes);
  }
};

}  // namespace

void shrink_rows_avx2(const ShrinkingTask& task, const ShrinkingScratch& scratch,
                      std::int32_t first, std::int32_t end) {
  ShrinkingLoop<Lanes>::run(task, scratch, first, end);
}

}  // namespace halcyra
