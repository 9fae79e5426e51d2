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
      while (scratch_.queues[stage].count != 0) scan_batch(stage);
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

  // Up to a group of windows, and the stage that each of them waits for.
  struct Windows {
    std::int32_t places[kLargestGroup];
    float norms[kLargestGroup];
    std::int32_t stages[kLargestGroup];
  };

  // Takes up to a group of windows that wait for this stage or, if these are fewer, for later ones
  // through stages, until few are left. A window passes stages that it passed before once more.
  void scan_batch(std::int32_t stage) const {
    Windows windows{};
    Bits alive = take(stage, windows);
    for (std::int32_t i = 0; i < plan_.block_count; ++i) {
      copy_block(layer_.low_sums + plan_.blocks[i].offset, windows.places,
                 scratch_.patches + i * kEight * kGroup);
    }
    Floats even_norms = Floats::load(windows.norms);
    Floats odd_norms = Floats::load(windows.norms + kLanes);
    Lanes::separate(even_norms, odd_norms);
    do {
      StageVotes<Lanes> votes(even_norms, odd_norms);
      votes.vote(plan_.stages[stage], plan_.packed_stumps, Batch{scratch_.patches});
      alive = stage_survivors(plan_.stages[stage], votes, alive, [&](std::int32_t window) {
        return SingleWindow<Lanes>(plan_, layer_, windows.places[window], windows.norms[window]);
      });
      ++stage;
    } while (stage < plan_.stage_count &&
             __builtin_popcount(alive) >= plan_.stages[stage].fewest_windows);
    for (; alive != 0; alive &= alive - 1) {
      const std::int32_t window = __builtin_ctz(alive);
      add(stage > windows.stages[window] ? stage : windows.stages[window], windows.places[window],
          windows.norms[window]);
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

  // Moves windows out of the queues, from this stage's on, and returns a bit for each. The rest of
  // the group repeats the first one.
  Bits take(std::int32_t stage, Windows& windows) const {
    std::int32_t count = 0;
    for (; stage < plan_.stage_count && count < kGroup; ++stage) {
      WindowQueue& queue = scratch_.queues[stage];
      for (; queue.count != 0 && count < kGroup; ++count) {
        --queue.count;
        windows.places[count] = queue.places[queue.count];
        windows.norms[count] = queue.norms[queue.count];
        windows.stages[count] = stage;
      }
    }
    for (std::int32_t i = count; i < kGroup; ++i) {
      windows.places[i] = windows.places[0];
      windows.norms[i] = windows.norms[0];
    }
    return count == 32 ? ~Bits{0} : (Bits{1} << count) - 1;
  }

  const PlanView& plan_;
  const LayerView& layer_;
  const ScanScratch& scratch_;
};

}  // namespace halcyra::haar
