#include <cstdint>
#include <cstring>

#include "face_pipeline/haar/window_scan.hpp"
#include "face_pipeline/haar/window_scan_loop.hpp"

namespace halcyra::haar {
namespace {

// Vectors of 16 bytes, which g++ and clang know on every processor.
using EightShorts = std::uint16_t __attribute__((vector_size(16)));
using FourInts = std::int32_t __attribute__((vector_size(16)));
using FourUnsigned = std::uint32_t __attribute__((vector_size(16)));
using FourFloats = float __attribute__((vector_size(16)));

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
  Floats floats() const { return {__builtin_convertvector(as_signed(), FourFloats)}; }
  Floats low_half_floats() const { return Ints{v << 16}.floats(); }
  Ints plus_where_below(Floats value, float threshold, std::int32_t gain) const {
    const FourInts gains = (value.v < Floats::all(threshold).v) & all_signed(gain);
    return {v + reinterpret_cast<FourUnsigned>(gains)};
  }
  std::uint32_t below(std::int32_t limit) const { return bits_of(as_signed() < all_signed(limit)); }
  std::uint32_t above(std::int32_t limit) const { return bits_of(as_signed() > all_signed(limit)); }
  friend Ints operator+(Ints a, Ints b) { return {a.v + b.v}; }
  friend Ints operator-(Ints a, Ints b) { return {a.v - b.v}; }
  friend Ints operator*(Ints a, std::int32_t b) { return {a.v * all(b).v}; }
};

struct Shorts {
  EightShorts v;

  static Shorts load(const std::uint16_t* from) { return {loaded<EightShorts>(from)}; }
  // Times 2^16, which saves shifting the values down; the norms make up for it.
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  Floats even_floats() const { return words().low_half_floats(); }
  Floats odd_floats() const { return upper_half_floats(); }
#else
  Floats even_floats() const { return upper_half_floats(); }
  Floats odd_floats() const { return words().low_half_floats(); }
#endif
  friend Shorts operator+(Shorts a, Shorts b) { return {a.v + b.v}; }
  friend Shorts operator-(Shorts a, Shorts b) { return {a.v - b.v}; }

 private:
  Ints words() const { return {reinterpret_cast<FourUnsigned>(v)}; }
  Floats upper_half_floats() const { return Ints{words().v & 0xFFFF0000U}.floats(); }
};

struct BaselineLanes {
  using Floats = halcyra::haar::Floats;
  using Ints = halcyra::haar::Ints;
  using Shorts = halcyra::haar::Shorts;
  static constexpr std::int32_t kLanes = 4;

  // A group is a single eight.
  static Shorts load_eights(const std::uint16_t* base, const std::int32_t* places) {
    return Shorts::load(base + places[0]);
  }
  static void load_eights(const std::int32_t* base, const std::int32_t* places, Ints& first,
                          Ints& second) {
    first = Ints::load(base + places[0]);
    second = Ints::load(base + places[0] + kLanes);
  }
  static void load_norms(const float* norms, const std::int32_t* places, Floats& even,
                         Floats& odd) {
    even = Floats::load(norms + places[0]);
    odd = Floats::load(norms + places[0] + kLanes);
  }
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
  static float norm(std::int32_t sum, std::int32_t square_sum, double area) {
    const double contrast = area * static_cast<double>(square_sum) -
                            static_cast<double>(sum) * static_cast<double>(sum);
    return static_cast<float>(1.0 / __builtin_sqrt(contrast));
  }
  static Floats contrast_norm(Ints sum, Ints square_sum, double area) {
    const FourInts sums = sum.as_signed();
    const FourInts squares = square_sum.as_signed();
    return {FourFloats{norm(sums[0], squares[0], area), norm(sums[1], squares[1], area),
                       norm(sums[2], squares[2], area), norm(sums[3], squares[3], area)}};
  }
};

}  // namespace

void scan_windows_baseline(const PlanView& plan, const LayerView& layer, const WindowRows& rows,
                           const ScanScratch& scratch) {
  WindowScanLoop<BaselineLanes>::run(plan, layer, rows, scratch);
}

}  // namespace halcyra::haar
