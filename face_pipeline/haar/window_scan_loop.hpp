// The scan of windows, written once for vectors of any length. Everything here is a template over
// the vectors' type, and each source file that includes this has such a type of its own. So the
// linker cannot mix the code of two instruction sets.
#pragma once

#include <cstdint>

#include "face_pipeline/haar/packed_scan.hpp"
#include "face_pipeline/haar/quick_votes.hpp"
#include "face_pipeline/haar/scan_records.hpp"
#include "face_pipeline/haar/single_window.hpp"
#include "face_pipeline/haar/stage_votes.hpp"

namespace halcyra::haar {

// Lanes is a type with the vectors Shorts (2 n lanes), Ints and Floats (n lanes) and the functions
// used below. A group is 2 n adjacent windows, or a batch of as many from anywhere. Ints and
// Floats of a group come in pairs, one for the even and one for the odd windows.
template <class Lanes>
class WindowScanLoop {
 public:
  static void run(const PlanView& plan, const LayerView& layer, const WindowRows& rows,
                  const ScanScratch& scratch) {
    WindowScanLoop(plan, layer, rows, scratch).scan();
  }

 private:
  using Shorts = typename Lanes::Shorts;
  using Ints = typename Lanes::Ints;
  using Floats = typename Lanes::Floats;
  using Bits = std::uint32_t;

  static constexpr std::int32_t kLanes = Lanes::kLanes;
  static constexpr std::int32_t kGroup = 2 * kLanes;
  static constexpr Bits kWholeGroup = kGroup == 32 ? ~Bits{0} : (Bits{1} << (kGroup % 32)) - 1;

  WindowScanLoop(const PlanView& plan, const LayerView& layer, const WindowRows& rows,
                 const ScanScratch& scratch)
      : plan_(plan),
        layer_(layer),
        rows_(rows),
        scratch_(scratch),
        packed_(plan, layer, scratch),
        groups_((rows.windows + kGroup - 1) / kGroup),
        words_((groups_ * kGroup + 63) / 64) {}

  // A group of adjacent windows.
  struct Adjacent {
    const std::uint16_t* low_sums;
    Shorts low(std::int32_t offset) const { return Shorts::load(low_sums + offset); }
  };

  // Likewise, for work that waits for loads rather than for arithmetic.
  struct AdjacentInParts {
    const std::uint16_t* low_sums;
    Shorts low(std::int32_t offset) const { return Shorts::load_in_parts(low_sums + offset); }
  };

  // ---- Stages.

  Bits first_stage_survivors(std::int32_t place, const Floats& even_norms, const Floats& odd_norms,
                             Bits alive) const {
    const PlannedStage& stage = plan_.stages[0];
    StageVotes<Lanes> votes(even_norms, odd_norms);
    votes.vote(stage, plan_.stumps, Adjacent{layer_.low_sums + place});
    return stage_survivors(stage, votes, alive, [&](std::int32_t window) {
      return SingleWindow<Lanes>(plan_, layer_, place + window);
    });
  }

  Bits quick_survivors(const QuickStage& stage, std::int32_t place, const Shorts& deviations,
                       Bits alive) const {
    QuickVotes<Lanes> votes(deviations);
    votes.vote(stage, plan_.quick_stumps, AdjacentInParts{layer_.low_sums + place});
    return votes.survivors(stage, alive, [&](std::int32_t window) {
      return SingleWindow<Lanes>(plan_, layer_, place + window);
    });
  }

  // Of half a group.
  Floats contrast_norms(std::int32_t place) const {
    const std::int32_t* o = plan_.norm_corners;
    const std::int32_t* sums = layer_.sums + place;
    const std::int32_t* squares = layer_.square_sums + place;
    const Ints sum = Ints::load(sums + o[0]) - Ints::load(sums + o[1]) - Ints::load(sums + o[2]) +
                     Ints::load(sums + o[3]);
    const Ints square_sum = Ints::load(squares + o[0]) - Ints::load(squares + o[1]) -
                            Ints::load(squares + o[2]) + Ints::load(squares + o[3]);
    return Lanes::contrast_norm(sum, square_sum, plan_.norm_area);
  }

  // ---- The scan.

  std::int32_t place_of(std::int32_t row, std::int32_t group) const {
    return (rows_.first_row + row * rows_.row_step) * layer_.pitch + group * kGroup;
  }

  std::int16_t* deviations_of(std::int32_t group) const {
    return scratch_.deviations + group * kGroup;
  }

  static void put(std::uint64_t* words, std::int32_t group, Bits bits) {
    words[group * kGroup / 64] |= std::uint64_t{bits} << (group * kGroup % 64);
  }

  static Bits get(const std::uint64_t* words, std::int32_t group) {
    return static_cast<Bits>(words[group * kGroup / 64] >> (group * kGroup % 64)) & kWholeGroup;
  }

  void first_stage(std::int32_t row) const {
    std::uint64_t* alive = scratch_.alive;
    std::uint64_t* rejected = scratch_.rejected;
    for (std::int32_t word = 0; word < words_; ++word) alive[word] = rejected[word] = 0;
    for (std::int32_t group = 0; group < groups_; ++group) {
      const std::int32_t left = rows_.windows - group * kGroup;
      const Bits present = left >= kGroup ? kWholeGroup : (Bits{1} << left) - 1;
      const std::int32_t place = place_of(row, group);
      Floats first = contrast_norms(place);
      Floats second = contrast_norms(place + kLanes);
      Lanes::deviations(first, second, plan_.deviation_unit).store(deviations_of(group));
      Lanes::separate(first, second);  // from here on those of the even and of the odd windows
      const Bits tested = present & Lanes::interleave(first.at_most(plan_.largest_norm),
                                                      second.at_most(plan_.largest_norm));
      if (tested == 0) continue;
      const Floats unscale = Floats::all(1.0F / kNormScale);
      const Bits survivors =
          first_stage_survivors(place, first * unscale, second * unscale, tested);
      put(alive, group, survivors);
      put(rejected, group, tested & ~survivors);
    }
  }

  static std::uint64_t reversed(std::uint64_t bits) {
    bits = (bits >> 1 & 0x5555555555555555U) | (bits & 0x5555555555555555U) << 1;
    bits = (bits >> 2 & 0x3333333333333333U) | (bits & 0x3333333333333333U) << 2;
    bits = (bits >> 4 & 0x0F0F0F0F0F0F0F0FU) | (bits & 0x0F0F0F0F0F0F0F0FU) << 4;
    return __builtin_bswap64(bits);
  }

  // The windows that OpenCV skips: if a window that it visits is rejected by the first stage, it
  // leaves out the next one, whatever that would have been. So of a run of rejected windows it
  // visits every other one, beginning with the first: a run that starts at an even bit is visited
  // at its even bits. `carry` is 1 if the last window of the word before makes it skip the first of
  // this.
  static std::uint64_t skipped(std::uint64_t rejected, std::uint64_t& carry) {
    constexpr std::uint64_t kEven = 0x5555555555555555U;
    const std::uint64_t runs = rejected & ~carry;
    const std::uint64_t even_starts = runs & ~(runs << 1) & kEven;
    const std::uint64_t from_even = runs & ~(runs + even_starts);
    const std::uint64_t visited = (from_even & kEven) | (runs & ~from_even & ~kEven);
    const std::uint64_t result = visited << 1 | carry;
    carry = visited >> 63;
    return result;
  }

  void drop_skipped() const {
    std::uint64_t* alive = scratch_.alive;
    const std::uint64_t* rejected = scratch_.rejected;
    std::uint64_t carry = 0;
    for (std::int32_t i = 0; i < words_; ++i) {
      if (rows_.from_right) {
        const std::int32_t word = words_ - 1 - i;
        alive[word] &= ~reversed(skipped(reversed(rejected[word]), carry));
      } else {
        alive[i] &= ~skipped(rejected[i], carry);
      }
    }
  }

  // Takes a group through quick tests for as long as enough of it is alive. The other windows are
  // packed.
  void advance_group(std::int32_t row, std::int32_t group, Bits alive) const {
    const std::int32_t place = place_of(row, group);
    const std::int16_t* const deviations = deviations_of(group);
    std::int32_t stage = 1;
    while (stage < plan_.stage_count &&
           __builtin_popcount(alive) >= plan_.quick_stages[stage].fewest_windows) {
      alive = quick_survivors(plan_.quick_stages[stage], place, Shorts::load(deviations), alive);
      ++stage;
    }
    for (; alive != 0; alive &= alive - 1) {
      const std::int32_t window = __builtin_ctz(alive);
      packed_.add(stage, place + window, deviations[window]);
    }
  }

  void scan() const {
    for (std::int32_t row = 0; row < rows_.row_count; ++row) {
      first_stage(row);
      drop_skipped();
      for (std::int32_t group = 0; group < groups_; ++group) {
        const Bits alive = get(scratch_.alive, group);
        if (alive != 0) advance_group(row, group, alive);
      }
    }
    packed_.finish();
  }

  const PlanView& plan_;
  const LayerView& layer_;
  const WindowRows& rows_;
  const ScanScratch& scratch_;
  PackedScan<Lanes> packed_;
  std::int32_t groups_;
  std::int32_t words_;
};

}  // namespace halcyra::haar
