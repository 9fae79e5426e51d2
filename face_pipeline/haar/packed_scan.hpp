// The stages in which survivors are rare. Windows from anywhere are packed into batches that fill
// the vectors, by copying the entries that their stumps read. A template over the vectors' type,
// see window_scan_loop.hpp.
#pragma once

#include <cstdint>

#include "face_pipeline/haar/patch_batch.hpp"
#include "face_pipeline/haar/quick_votes.hpp"
#include "face_pipeline/haar/scan_records.hpp"
#include "face_pipeline/haar/single_window.hpp"
#include "face_pipeline/haar/stage_votes.hpp"

namespace halcyra::haar {

template <class Lanes>
class PackedScan {
 public:
  PackedScan(const PlanView& plan, const LayerView& layer, const ScanScratch& scratch)
      : plan_(plan), layer_(layer), scratch_(scratch) {
    for (std::int32_t stage = 0; stage <= plan.stage_count; ++stage) {
      scratch_.queues[stage].count = 0;
    }
    scratch_.passed->count = 0;
  }

  // A window that passed the first stage and the quick tests of all others before this one. It may
  // be scanned at once or later.
  void add(std::int32_t stage, std::int32_t place, std::int16_t deviation) const {
    WindowQueue& queue = scratch_.queues[stage];
    queue.places[queue.count] = place;
    queue.deviations[queue.count] = deviation;
    ++queue.count;
    if (queue.count != kGroup) return;
    if (stage == plan_.stage_count) {
      confirm();
    } else {
      scan_batch(stage);
    }
  }

  // Scans all windows that were added.
  void finish() const {
    for (std::int32_t stage = 1; stage < plan_.stage_count; ++stage) {
      while (scratch_.queues[stage].count != 0) scan_batch(stage);
    }
    if (scratch_.queues[plan_.stage_count].count != 0) confirm();
  }

 private:
  using Bits = std::uint32_t;
  using Floats = typename Lanes::Floats;
  using Shorts = typename Lanes::Shorts;
  static constexpr std::int32_t kLanes = Lanes::kLanes;
  static constexpr std::int32_t kGroup = 2 * kLanes;

  // Up to a group of windows, and the stage that each of them waits for.
  struct Windows {
    std::int32_t places[kLargestGroup];
    std::int16_t deviations[kLargestGroup];
    std::int32_t stages[kLargestGroup];
  };

  // Takes up to a group of windows that wait for this stage or, if these are fewer, for later ones
  // through quick tests, until few are left. A window passes tests that it passed before once more.
  void scan_batch(std::int32_t stage) const {
    Windows windows{};
    Bits alive = take(stage, plan_.stage_count, windows);
    const PatchBatch<Lanes> batch(plan_, layer_, scratch_, windows.places);
    const Shorts deviations = Shorts::load(windows.deviations);
    do {
      QuickVotes<Lanes> votes(deviations);
      votes.vote(plan_.quick_stages[stage], plan_.packed_quick_stumps, batch);
      alive = votes.survivors(plan_.quick_stages[stage], alive, [&](std::int32_t window) {
        return SingleWindow<Lanes>(plan_, layer_, windows.places[window]);
      });
      ++stage;
    } while (stage < plan_.stage_count &&
             __builtin_popcount(alive) >= plan_.quick_stages[stage].fewest_windows);
    for (; alive != 0; alive &= alive - 1) {
      const std::int32_t window = __builtin_ctz(alive);
      add(stage > windows.stages[window] ? stage : windows.stages[window], windows.places[window],
          windows.deviations[window]);
    }
  }

  // Takes the windows that passed all quick tests through the stages themselves.
  void confirm() const {
    Windows windows{};
    Bits alive = take(plan_.stage_count, plan_.stage_count + 1, windows);
    if (plan_.block_count != 0) {
      alive = batch_survivors(windows, alive);
    } else {
      alive = single_survivors(windows, alive);
    }
    for (; alive != 0; alive &= alive - 1) {
      scratch_.passed->places[scratch_.passed->count++] = windows.places[__builtin_ctz(alive)];
    }
  }

  Bits batch_survivors(const Windows& windows, Bits alive) const {
    const PatchBatch<Lanes> batch(plan_, layer_, scratch_, windows.places);
    float norms[kLargestGroup];  // the even windows' ones, then the odd ones'
    for (std::int32_t i = 0; i < kGroup; ++i) {
      norms[i / 2 + i % 2 * kLanes] =
          SingleWindow<Lanes>(plan_, layer_, windows.places[i]).norm() * (1.0F / kNormScale);
    }
    for (std::int32_t stage = 1; stage < plan_.stage_count && alive != 0; ++stage) {
      StageVotes<Lanes> votes(Floats::load(norms), Floats::load(norms + kLanes));
      votes.vote(plan_.stages[stage], plan_.stumps, batch);
      alive = stage_survivors(plan_.stages[stage], votes, alive, [&](std::int32_t window) {
        return SingleWindow<Lanes>(plan_, layer_, windows.places[window]);
      });
    }
    return alive;
  }

  Bits single_survivors(const Windows& windows, Bits alive) const {
    Bits survivors = alive;
    for (; alive != 0; alive &= alive - 1) {
      const std::int32_t i = __builtin_ctz(alive);
      const SingleWindow<Lanes> window(plan_, layer_, windows.places[i]);
      const float norm = window.norm();
      for (std::int32_t stage = 1; stage < plan_.stage_count; ++stage) {
        if (!window.passes_exactly(plan_.stages[stage], norm)) survivors &= ~(Bits{1} << i);
      }
    }
    return survivors;
  }

  // Moves windows out of the queues, from this stage's on, and returns a bit for each. The rest of
  // the group repeats the first one.
  Bits take(std::int32_t stage, std::int32_t end, Windows& windows) const {
    std::int32_t count = 0;
    for (; stage < end && count < kGroup; ++stage) {
      WindowQueue& queue = scratch_.queues[stage];
      for (; queue.count != 0 && count < kGroup; ++count) {
        --queue.count;
        windows.places[count] = queue.places[queue.count];
        windows.deviations[count] = queue.deviations[queue.count];
        windows.stages[count] = stage;
      }
    }
    for (std::int32_t i = count; i < kGroup; ++i) {
      windows.places[i] = windows.places[0];
      windows.deviations[i] = windows.deviations[0];
    }
    return count == 32 ? ~Bits{0} : (Bits{1} << count) - 1;
  }

  const PlanView& plan_;
  const LayerView& layer_;
  const ScanScratch& scratch_;
};

}  // namespace halcyra::haar
