// The shrinking of rows, written once for vectors of any length. Everything here is a template over
// the vectors' type, and each source file that includes this has such a type of its own. So the
// linker cannot mix the code of two instruction sets.
#pragma once

#include <cstdint>
#include <cstring>

#include "dashboard/shrinking_records.hpp"

namespace halcyra {

// Adds the same floats in the same order as OpenCV, first along the rows and then down the columns,
// so every sum rounds as OpenCV's does. Lanes is a type with the vectors Floats, Ints (as many
// lanes as Floats) and Pixels (a pixel of each of kRows rows) and the functions used below.
template <class Lanes>
class ShrinkingLoop {
 public:
  static void run(const ShrinkingTask& task, const ShrinkingScratch& scratch, std::int32_t first,
                  std::int32_t end) {
    ShrinkingLoop(task, scratch).shrink(first, end);
  }

 private:
  using Floats = typename Lanes::Floats;
  using Ints = typename Lanes::Ints;
  using Pixels = typename Lanes::Pixels;

  static constexpr std::int32_t kChannels = 3;
  static constexpr std::int32_t kCacheLine = 64;  // bytes
  static constexpr std::int32_t kLanes = sizeof(Floats) / sizeof(float);
  static constexpr std::int32_t kGroup = 4 * kLanes;  // bytes of the target that are made at once
  static_assert(Lanes::kRows <= kMostRowsAtOnce && Lanes::kStride <= kWidePixel &&
                kGroup <= kBeyondRow);

  ShrinkingLoop(const ShrinkingTask& task, const ShrinkingScratch& scratch)
      : task_(task), scratch_(scratch), kept_rows_(task.down.most + Lanes::kRows) {}

  template <class Vector>
  static Vector loaded(const float* from) {
    Vector vector;
    std::memcpy(&vector, from, sizeof(vector));
    return vector;
  }

  // Instead of std::min, whose copy from here the linker could give to the rest of the program.
  static std::int32_t lesser(std::int32_t a, std::int32_t b) { return a < b ? a : b; }

  // Neighbouring rows of the target share a row of the source, whose sums are kept for the second.
  void shrink(std::int32_t first, std::int32_t end) const {
    std::int32_t next = task_.down.first[first];
    for (std::int32_t row = first; row < end; ++row) {
      const std::int32_t needed = task_.down.first[row] + task_.down.count[row];
      for (; next < needed; next += Lanes::kRows) sum_across(next);
      sum_down(row);
    }
  }

  float* sums_of(std::int32_t source_row) const {
    return scratch_.sums + source_row % kept_rows_ * scratch_.sums_length;
  }

  // The pixels of a row of the source; below the last row, that is repeated.
  const std::uint8_t* pixels_of(std::int32_t source_row) const {
    const std::int32_t row = lesser(source_row, task_.source_rows - 1);
    return task_.source + static_cast<std::size_t>(row) * task_.source_step;
  }

  // Weights and adds along kRows rows of the source.
  void sum_across(std::int32_t source_row) const {
    float* sums[Lanes::kRows];
    for (std::int32_t i = 0; i < Lanes::kRows; ++i) sums[i] = sums_of(source_row + i);
    for (std::int32_t column = 0; column < task_.target_columns; column += kBlockColumns) {
      const std::int32_t end = lesser(column + kBlockColumns, task_.target_columns);
      widen(source_row, column, end);
      sum_block(column, end, sums);
    }
  }

  // Turns the pixels that a block of the target's columns needs into floats. The same pixels of the
  // next rows are fetched meanwhile, as the processor does not foresee that they come next.
  void widen(std::int32_t source_row, std::int32_t column, std::int32_t end) const {
    const AxisView& across = task_.across;
    const std::int32_t first = across.first[column];
    const std::int32_t count = across.first[end - 1] + across.count[end - 1] - first;
    const std::uint8_t* pixels[Lanes::kRows];
    for (std::int32_t i = 0; i < Lanes::kRows; ++i) {
      pixels[i] = pixels_of(source_row + i) + first * kChannels;
      const std::uint8_t* const next = pixels_of(source_row + Lanes::kRows + i) + first * kChannels;
      for (std::int32_t at = 0; at < count * kChannels; at += kCacheLine) {
        __builtin_prefetch(next + at);
      }
    }
    Lanes::widen(pixels, count, scratch_.wide);
  }

  // With a number of weights that the compiler knows, the loop over them is unrolled.
  void sum_block(std::int32_t column, std::int32_t end, float* const* sums) const {
    switch (task_.across.most) {
      case 2:
        return sum_columns<2>(column, end, sums);
      case 3:
        return sum_columns<3>(column, end, sums);
      case 4:
        return sum_columns<4>(column, end, sums);
      case 5:
        return sum_columns<5>(column, end, sums);
      case 6:
        return sum_columns<6>(column, end, sums);
      default:
        return sum_columns<0>(column, end, sums);
    }
  }

  // kCount is the number of weights, or 0 for any. Adding a pixel of weight 0 changes no sum.
  template <std::int32_t kCount>
  void sum_columns(std::int32_t column, std::int32_t end, float* const* sums) const {
    const AxisView& across = task_.across;
    const std::int32_t count = kCount != 0 ? kCount : across.most;
    const std::int32_t first = across.first[column];
    for (; column < end; ++column) {
      const float* const weights = across.weights + column * count;
      const float* const from = scratch_.wide + (across.first[column] - first) * Lanes::kStride;
      Pixels sum = loaded<Pixels>(from) * weights[0];
      for (std::int32_t i = 1; i < count; ++i) {
        sum += loaded<Pixels>(from + i * Lanes::kStride) * weights[i];
      }
      Lanes::store(sum, sums, column * kChannels);
    }
  }

  // To the nearest whole number, halves to the even one: so large a float has no fraction left.
  static Ints rounded(Floats sum) {
    constexpr float kNoFraction = 12582912.0F;  // 1.5 * 2^23
    return reinterpret_cast<Ints>(sum + kNoFraction) - static_cast<std::int32_t>(0x4B400000);
  }

  void sum_down(std::int32_t row) const {
    const float* rows[kMostRows];
    const std::int32_t count = task_.down.count[row];
    for (std::int32_t i = 0; i < count; ++i) rows[i] = sums_of(task_.down.first[row] + i);
    const float* const weights = task_.down.weights + row * task_.down.most;
    std::uint8_t* const target = task_.target + static_cast<std::size_t>(row) * task_.target_step;
    const std::int32_t length = task_.target_columns * kChannels;
    for (std::int32_t at = 0; at < length; at += kGroup) {
      Floats sums[4] = {};
      for (std::int32_t i = 0; i < count; ++i) {
        const float* const from = rows[i] + at;
        sums[0] += loaded<Floats>(from) * weights[i];
        sums[1] += loaded<Floats>(from + kLanes) * weights[i];
        sums[2] += loaded<Floats>(from + 2 * kLanes) * weights[i];
        sums[3] += loaded<Floats>(from + 3 * kLanes) * weights[i];
      }
      std::uint8_t bytes[sizeof(Floats)];
      Lanes::narrow(rounded(sums[0]), rounded(sums[1]), rounded(sums[2]), rounded(sums[3]), bytes);
      const std::int32_t left = length - at;
      if (left >= kGroup) {
        std::memcpy(target + at, bytes, sizeof(bytes));
      } else {
        std::memcpy(target + at, bytes, static_cast<std::size_t>(left));
      }
    }
  }

  const ShrinkingTask& task_;
  const ShrinkingScratch& scratch_;
  const std::int32_t kept_rows_;
};

}  // namespace halcyra
