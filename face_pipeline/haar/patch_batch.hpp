// Copies what the stumps of a batch of windows read. A template over the vectors' type, see
// window_scan_loop.hpp.
#pragma once

#include <cstdint>

#include "face_pipeline/haar/scan_records.hpp"

namespace halcyra::haar {

// The patches of a group of windows from anywhere, entry by entry: the first entry of all windows,
// then the second of all windows, and so on. So a stump reads its entries for all windows at once.
template <class Lanes>
class PatchBatch {
 public:
  // `places` has a whole group. The patches stay in the scratch memory until the next batch.
  PatchBatch(const PlanView& plan, const LayerView& layer, const ScanScratch& scratch,
             const std::int32_t* places)
      : patches_(scratch.patches) {
    for (std::int32_t i = 0; i < plan.block_count; ++i) {
      copy_block(layer.low_sums + plan.blocks[i].offset, places,
                 scratch.patches + i * kEight * kGroup);
    }
  }

  typename Lanes::Shorts low(std::int32_t offset) const {
    return Lanes::Shorts::load_aligned(patches_ + offset);
  }

 private:
  static constexpr std::int32_t kGroup = 2 * Lanes::kLanes;

  // Copies a block of each window: the first entry of all windows, then the second, and so on.
  static void copy_block(const std::uint16_t* base, const std::int32_t* places, std::uint16_t* to) {
    constexpr std::int32_t kPart = Lanes::Eights::kWindows;
    for (std::int32_t part = 0; part < kGroup; part += kPart) {
      transpose(base, places + part, to + part);
    }
  }

  // Three times, each vector is zipped with the one that is four vectors after it. Then the eight
  // entries of eight windows have changed places with the eight windows.
  static void transpose(const std::uint16_t* base, const std::int32_t* places, std::uint16_t* to) {
    using Eights = typename Lanes::Eights;
    Eights a[kEight];
    Eights b[kEight];
    for (int i = 0; i < kEight; ++i) a[i] = Eights::load(base, places + i);
    zip(a, b);
    zip(b, a);
    zip(a, b);
    for (int i = 0; i < kEight; ++i) b[i].store(to + i * kGroup);
  }

  static void zip(const typename Lanes::Eights* from, typename Lanes::Eights* to) {
    for (int i = 0; i < kEight / 2; ++i) {
      to[2 * i] = Lanes::Eights::zip_low(from[i], from[i + kEight / 2]);
      to[2 * i + 1] = Lanes::Eights::zip_high(from[i], from[i + kEight / 2]);
    }
  }

  const std::uint16_t* patches_;
};

}  // namespace halcyra::haar
