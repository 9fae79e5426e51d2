// The input of the kernels that shrink a picture. Only plain records, since a source file that is
// compiled for a newer processor must not share inline code with the rest of the program.
#pragma once

#include <cstddef>
#include <cstdint>

namespace halcyra {

// Along one axis, each pixel of the target is a weighted sum of adjacent pixels of the source.
struct AxisView {
  const std::int32_t* first;  // of those pixels, for each pixel of the target
  const std::int32_t* count;  // of those pixels, likewise
  const float* weights;       // `most` for each pixel of the target; beyond its count they are 0
  std::int32_t most;          // no count is larger
};

// 8-bit BGR. Steps are in bytes.
struct ShrinkingTask {
  const std::uint8_t* source;
  std::size_t source_step;
  std::int32_t source_columns;
  std::int32_t source_rows;
  std::uint8_t* target;
  std::size_t target_step;
  std::int32_t target_columns;
  AxisView across;
  AxisView down;
};

// Columns of the target that are summed up at once, so that their source stays in the first cache.
constexpr std::int32_t kBlockColumns = 128;

constexpr std::int32_t kMostRows = 16;       // of the source that one row of the target may need
constexpr std::int32_t kMostRowsAtOnce = 2;  // that a kernel sums up
constexpr std::int32_t kWidePixel = 8;   // most floats that a kernel has for a pixel of the source
constexpr std::int32_t kBeyondRow = 32;  // floats after a row of sums that a kernel may touch

// Memory of one thread. All floats are finite at the start, since a weight of 0 may meet any.
struct ShrinkingScratch {
  float* wide;               // pixels of the source as floats, for one block of columns
  float* sums;               // down.most + kMostRowsAtOnce rows of weighted sums along the row
  std::int32_t sums_length;  // floats in a row of `sums`: three a column, and kBeyondRow
};

// Makes the target's rows from `first` up to, not including, `end`.
using ShrinkRows = void(const ShrinkingTask& task, const ShrinkingScratch& scratch,
                        std::int32_t first, std::int32_t end);

ShrinkRows shrink_rows_baseline;
ShrinkRows shrink_rows_avx2;  // only in a build for x86-64

}  // namespace halcyra
