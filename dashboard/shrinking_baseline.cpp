#include <cstdint>
#include <cstring>

#include "dashboard/shrinking_loop.hpp"

namespace halcyra {
namespace {

// Pixels of one row, three floats each. A vector holds a pixel and the first float of the next,
// whose place the next pixel's own sum takes.
struct Lanes {
  using Floats = float __attribute__((vector_size(16)));
  using Ints = std::int32_t __attribute__((vector_size(16)));
  using Pixels = Floats;

  static constexpr std::int32_t kRows = 1;
  static constexpr std::int32_t kStride = 3;

  static void widen(const std::uint8_t* const* rows, std::int32_t pixels, float* to) {
    const std::uint8_t* const from = rows[0];
    for (std::int32_t i = 0; i < 3 * pixels; ++i) to[i] = from[i];
  }

  static void store(Pixels sum, float* const* sums, std::int32_t at) {
    std::memcpy(sums[0] + at, &sum, sizeof(sum));
  }

  static void narrow(Ints a, Ints b, Ints c, Ints d, std::uint8_t* to) {
    const Ints vectors[4] = {a, b, c, d};
    std::int32_t levels[16];
    std::memcpy(levels, vectors, sizeof(levels));
    for (int i = 0; i < 16; ++i) to[i] = static_cast<std::uint8_t>(levels[i]);
  }
};

}  // namespace

void shrink_rows_baseline(const ShrinkingTask& task, const ShrinkingScratch& scratch,
                          std::int32_t first, std::int32_t end) {
  ShrinkingLoop<Lanes>::run(task, scratch, first, end);
}

}  // namespace halcyra
