// The stages in which survivors are rare. Windows from anywhere are packed into batches that fill
// the vectors, by copying the entries that their stumps read. A template over the vectors' type,
// see window_scan_loop.hpp.
#pragma once

#include <cstdint>

#include "face_pipeline/haar/scan_records.hpp"
#include "face_pipeline/haar/single_window.hpp"
#include "face_pipeline/haar/stage_votes.hpp"

namespace halcyra::haar {

// A batch holds the patches of a group of windows, entry by entry: the first entry of all windows,
// then the second of all windows, and so on. So a stump reads its entries for all windows at once,
// wherever these are.
template <class Lanes>
class PackedScan {
 public:
  PackedScan(const PlanView& plan, const LayerView& layer, const ScanScratch& scratch)
      : plan_(plan), layer_(layer), scratch_(scratch) {
    for (std::int32_t stage = 0; stage < plan.stage_count; ++stage) scratch.queues[stage].count = 0;
    scratch.passed->count = 0;
  }

  // A window that passed all stages before this one. It may be scanned at once or later.
  void add(std::int32_t stage, std::int32_t place, float norm) const {
    if (stage == plan_.stage_count) {
      scratch_.passed->places[scratch_.passed->count++] = place;
      return;
    }
    WindowQueue& queue = scratch_.queues[stage];
    queue.places[queue.count] = place;
    queue.norms[queue.count] = norm;
    ++queue.count;
    if (queue.count == kGroup) scan_batch(stage);
  }

  // Scans all windows that were added.
  void finish() const {
    for (std::int32_t stage = 1; stage < plan_.stage_count; ++stage) {
      if (scratch_.queues[stage].count != 0) scan_batch(stage);
    }
  }

 private:
  using Bits = std::uint32_t;
  using Floats = typename Lanes::Floats;
  static constexpr std::int32_t kLanes = Lanes::kLanes;
  static constexpr std::int32_t kGroup = 2 * kLanes;

  struct Batch {
    const std::uint16_t* patches;
    typename Lanes::Shorts low(std::int32_t offset) const {
      return Lanes::Shorts::load_aligned(patches + offset);
    }
  };

  // Takes up to a group of windows from the queue through stages, until few are left.
  void scan_batch(std::int32_t stage) const {
    std::int32_t places[kLargestGroup];
    float norms[kLargestGroup];
    Bits alive = take(scratch_.queues[stage], places, norms);
    for (std::int32_t i = 0; i < plan_.block_count; ++i) {
      copy_block(layer_.low_sums + plan_.blocks[i].offset, places,
                 scratch_.patches + i * kEight * kGroup);
    }
    Floats even_norms = Floats::load(norms);
    Floats odd_norms = Floats::load(norms + kLanes);
    Lanes::separate(even_norms, odd_norms);
    do {
      StageVotes<Lanes> votes(even_norms, odd_norms);
      votes.vote(plan_.stages[stage], plan_.packed_stumps, Batch{scratch_.patches});
      alive = stage_survivors(plan_.stages[stage], votes, alive, [&](std::int32_t window) {
        return SingleWindow<Lanes>(plan_, layer_, places[window], norms[window]);
      });
      ++stage;
    } while (stage < plan_.stage_count &&
             __builtin_popcount(alive) >= plan_.stages[stage].fewest_windows);
    for (; alive != 0; alive &= alive - 1) {
      const std::int32_t window = __builtin_ctz(alive);
      add(stage, places[window], norms[window]);
    }
  }

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

  // Moves the windows out and returns a bit for each. The rest of the group repeats the first one.
  static Bits take(WindowQueue& queue, std::int32_t* places, float* norms) {
    for (std::int32_t i = 0; i < kGroup; ++i) {
      const std::int32_t from = i < queue.count ? i : 0;
      places[i] = queue.places[from];
      norms[i] = queue.norms[from];
    }
    const Bits all = queue.count == 32 ? ~Bits{0} : (Bits{1} << queue.count) - 1;
    queue.count = 0;
    return all;
  }

  const PlanView& plan_;
  const LayerView& layer_;
  const ScanScratch& scratch_;
};

}  // namespace halcyra::haar
