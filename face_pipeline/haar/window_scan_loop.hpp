// The scan of windows, written once for vectors of any length. Everything here is a template over
// the vectors' type, and each source file that includes this has such a type of its own. So the
// linker cannot mix the code of two instruction sets.
#pragma once

#include <cstdint>

#include "face_pipeline/haar/scan_records.hpp"

namespace halcyra::haar {

// Lanes is a type with the vectors Shorts (2 n lanes), Ints and Floats (n lanes) and the functions
// used below. A group is 2 n windows: all adjacent, or eights of adjacent ones from anywhere. Ints
// and Floats of a group come in pairs, one for the even and one for the odd windows.
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
  static constexpr float kNormScale = 65536.0F;

  static constexpr std::int32_t kEights = kGroup / kEight;

  // A group with windows alive in at least this many eights goes through the next stage as a whole,
  // as adjacent windows are loaded at once. In one with fewer, the eights wait.
  static constexpr std::int32_t kWorthAGroup = kEights - kEights / 4;

  WindowScanLoop(const PlanView& plan, const LayerView& layer, const WindowRows& rows,
                 const ScanScratch& scratch)
      : plan_(plan),
        layer_(layer),
        rows_(rows),
        scratch_(scratch),
        groups_((rows.windows + kGroup - 1) / kGroup),
        words_((groups_ * kGroup + 63) / 64) {}

  // ---- Values of features.

  struct TwoInts {
    Ints first;
    Ints second;
    friend TwoInts operator+(const TwoInts& a, const TwoInts& b) {
      return {a.first + b.first, a.second + b.second};
    }
    friend TwoInts operator-(const TwoInts& a, const TwoInts& b) {
      return {a.first - b.first, a.second - b.second};
    }
    friend TwoInts operator*(const TwoInts& a, std::int32_t b) {
      return {a.first * b, a.second * b};
    }
  };

  template <class Windows>
  static auto halves(const Windows& at, const std::int32_t* o) {
    const auto twice = at.low(o[4]) - at.low(o[5]);
    return at.low(o[0]) + at.low(o[1]) - at.low(o[2]) - at.low(o[3]) + (twice + twice);
  }

  template <class Windows>
  static auto thirds(const Windows& at, const std::int32_t* o) {
    const auto thrice = at.low(o[4]) + at.low(o[5]) - at.low(o[6]) - at.low(o[7]);
    const auto once = at.low(o[0]) + at.low(o[1]) - at.low(o[2]) - at.low(o[3]);
    return once + thrice + (thrice + thrice);
  }

  template <class Windows>
  static auto checks(const Windows& at, const std::int32_t* o) {
    const auto once = at.low(o[0]) + at.low(o[1]) + at.low(o[2]) + at.low(o[3]);
    const auto edges = at.low(o[4]) + at.low(o[5]) + at.low(o[6]) + at.low(o[7]);
    const auto centre = at.low(o[8]);
    const auto twice = centre + centre - edges;
    return once + (twice + twice);
  }

  template <class Windows>
  static auto inverse_checks(const Windows& at, const std::int32_t* o) {
    const auto value = checks(at, o);
    return value - (value + value);
  }

  template <class Windows>
  static auto rectangle(const Windows& at, const std::int32_t* corners) {
    return at.whole(corners[0]) - at.whole(corners[1]) - at.whole(corners[2]) +
           at.whole(corners[3]);
  }

  template <class Windows>
  static auto any_shape(const Windows& at, const AnyFeature& feature) {
    return rectangle(at, feature.corners[0]) * feature.weights[0] +
           rectangle(at, feature.corners[1]) * feature.weights[1] +
           rectangle(at, feature.corners[2]) * feature.weights[2];
  }

  // The sums of a group's votes.
  class Votes {
   public:
    Votes(const Floats& even_norms, const Floats& odd_norms, std::int32_t start)
        : norms_{even_norms, odd_norms}, sums_{Ints::all(start), Ints::all(start)} {}

    void add(const PlannedStump& stump, const Shorts& values) {
      add(stump, values.even_floats(), values.odd_floats());
    }
    void add(const PlannedStump& stump, const TwoInts& values) {
      const Floats scale = Floats::all(kNormScale);
      Floats even = values.first.floats();
      Floats odd = values.second.floats();
      Lanes::separate(even, odd);
      add(stump, even * scale, odd * scale);
    }
    Bits below(std::int32_t limit) const {
      return Lanes::interleave(sums_[0].below(limit), sums_[1].below(limit));
    }
    Bits above(std::int32_t limit) const {
      return Lanes::interleave(sums_[0].above(limit), sums_[1].above(limit));
    }

   private:
    void add(const PlannedStump& stump, const Floats& even, const Floats& odd) {
      sums_[0] = sums_[0].plus_where_below(even * norms_[0], stump.threshold, stump.gain);
      sums_[1] = sums_[1].plus_where_below(odd * norms_[1], stump.threshold, stump.gain);
    }

    Floats norms_[2];
    Ints sums_[2];
  };

  // A group of adjacent windows.
  struct Adjacent {
    const std::uint16_t* low_sums;
    const std::int32_t* sums;

    Shorts low(std::int32_t offset) const { return Shorts::load(low_sums + offset); }
    TwoInts whole(std::int32_t offset) const {
      return {Ints::load(sums + offset), Ints::load(sums + offset + kLanes)};
    }
  };

  // A group of eights from anywhere.
  struct Scattered {
    const LayerView& layer;
    const std::int32_t* places;

    Shorts low(std::int32_t offset) const {
      return Lanes::load_eights(layer.low_sums + offset, places);
    }
    TwoInts whole(std::int32_t offset) const {
      TwoInts eights;
      Lanes::load_eights(layer.sums + offset, places, eights.first, eights.second);
      return eights;
    }
  };

  // The votes of all stumps of a stage.
  template <class Windows>
  void vote(const PlannedStage& stage, const Windows& windows, Votes& votes) const {
    const PlannedStump* stump = plan_.stumps + stage.first;
    const PlannedStump* const stumps = plan_.stumps;
    for (; stump < stumps + stage.ends[kHalves]; ++stump) {
      votes.add(*stump, halves(windows, stump->offsets));
    }
    for (; stump < stumps + stage.ends[kThirds]; ++stump) {
      votes.add(*stump, thirds(windows, stump->offsets));
    }
    for (; stump < stumps + stage.ends[kChecks]; ++stump) {
      votes.add(*stump, checks(windows, stump->offsets));
    }
    for (; stump < stumps + stage.ends[kInverseChecks]; ++stump) {
      votes.add(*stump, inverse_checks(windows, stump->offsets));
    }
    for (; stump < stumps + stage.ends[kAnyShape]; ++stump) {
      votes.add(*stump, any_shape(windows, plan_.any[stump->offsets[0]]));
    }
  }

  // ---- One window, in OpenCV's arithmetic.

  struct Single {
    const std::int32_t* sums;
    std::uint32_t low(std::int32_t offset) const {
      return static_cast<std::uint32_t>(sums[offset]);
    }
    std::uint32_t whole(std::int32_t offset) const { return low(offset); }
  };

  static std::uint32_t any_shape(const Single& at, const AnyFeature& feature) {
    std::uint32_t value = 0;
    for (int i = 0; i < 3; ++i) {
      value += rectangle(at, feature.corners[i]) * static_cast<std::uint32_t>(feature.weights[i]);
    }
    return value;
  }

  std::int32_t value_of(const Single& at, const ExactStump& exact) const {
    const std::int32_t* offsets = plan_.stumps[exact.planned].offsets;
    switch (exact.shape) {
      case kHalves:
        return static_cast<std::int32_t>(halves(at, offsets));
      case kThirds:
        return static_cast<std::int32_t>(thirds(at, offsets));
      case kChecks:
        return static_cast<std::int32_t>(checks(at, offsets));
      case kInverseChecks:
        return static_cast<std::int32_t>(inverse_checks(at, offsets));
      default:
        return static_cast<std::int32_t>(any_shape(at, plan_.any[offsets[0]]));
    }
  }

  bool passes_exactly(const PlannedStage& stage, std::int32_t place, float norm) const {
    const Single at{layer_.sums + place};
    double sum = 0.0;
    for (std::int32_t i = 0; i < stage.exact_count; ++i) {
      const ExactStump& exact = plan_.exact[stage.first_exact + i];
      const float value = static_cast<float>(value_of(at, exact)) * (norm * kNormScale);
      const float vote = value < exact.threshold ? exact.below : exact.not_below;
      sum += static_cast<double>(vote);
    }
    return !(sum < static_cast<double>(stage.threshold));
  }

  // ---- Stages.

  static std::int32_t lowest(Bits bits) { return __builtin_ctz(bits); }

  // Where the norm of a window stands among those of its group.
  static std::int32_t norm_index(std::int32_t window) { return window / 2 + (window % 2) * kLanes; }

  // Survivors among the windows alive, given their votes; `single_passes` decides on a window whose
  // sum is too close to the threshold.
  template <class SinglePasses>
  static Bits survivors(const PlannedStage& stage, const Votes& votes, Bits alive,
                        SinglePasses single_passes) {
    const Bits above = alive & votes.above(stage.surely_above);
    Bits result = above;
    for (Bits open = alive & ~above & ~votes.below(stage.surely_below); open != 0;
         open &= open - 1) {
      const std::int32_t window = lowest(open);
      if (single_passes(window)) result |= Bits{1} << window;
    }
    return result;
  }

  Bits group_survivors(const PlannedStage& stage, std::int32_t place, const float* norms,
                       Bits alive) const {
    Votes votes(Floats::load(norms), Floats::load(norms + kLanes), stage.start);
    vote(stage, Adjacent{layer_.low_sums + place, layer_.sums + place}, votes);
    return survivors(stage, votes, alive, [&](std::int32_t window) {
      return passes_exactly(stage, place + window, norms[norm_index(window)]);
    });
  }

  Bits scattered_survivors(const PlannedStage& stage, const std::int32_t* places,
                           const std::int32_t* norm_places, Bits alive) const {
    Floats even = Floats::all(0.0F);
    Floats odd = even;
    Lanes::load_norms(scratch_.norms, norm_places, even, odd);
    Votes votes(even, odd, stage.start);
    vote(stage, Scattered{layer_, places}, votes);
    return survivors(stage, votes, alive, [&](std::int32_t window) {
      const std::int32_t eight = window / kEight;
      const std::int32_t rest = window % kEight;
      return passes_exactly(stage, places[eight] + rest,
                            scratch_.norms[norm_places[eight] + norm_index(rest)]);
    });
  }

  // Stores the norms of a group and returns which windows have enough contrast.
  Bits measure_contrast(std::int32_t place, float* norms) const {
    const std::int32_t* o = plan_.norm_corners;
    Floats halves_of_group[2] = {Floats::all(0.0F), Floats::all(0.0F)};
    for (std::int32_t half = 0; half < 2; ++half) {
      const std::int32_t* sums = layer_.sums + place + half * kLanes;
      const std::int32_t* squares = layer_.square_sums + place + half * kLanes;
      const Ints sum = Ints::load(sums + o[0]) - Ints::load(sums + o[1]) - Ints::load(sums + o[2]) +
                       Ints::load(sums + o[3]);
      const Ints square_sum = Ints::load(squares + o[0]) - Ints::load(squares + o[1]) -
                              Ints::load(squares + o[2]) + Ints::load(squares + o[3]);
      halves_of_group[half] = Lanes::contrast_norm(sum, square_sum, plan_.norm_area);
    }
    Lanes::separate(halves_of_group[0], halves_of_group[1]);
    const Floats unscale = Floats::all(1.0F / kNormScale);
    (halves_of_group[0] * unscale).store(norms);
    (halves_of_group[1] * unscale).store(norms + kLanes);
    return Lanes::interleave(halves_of_group[0].at_most(plan_.largest_norm),
                             halves_of_group[1].at_most(plan_.largest_norm));
  }

  // ---- The scan.

  std::int32_t place_of(std::int32_t row, std::int32_t group) const {
    return (rows_.first_row + row * rows_.row_step) * layer_.pitch + group * kGroup;
  }

  float* norms_of(std::int32_t row, std::int32_t group) const {
    return scratch_.norms + (row * groups_ + group) * kGroup;
  }

  static void put(std::uint64_t* words, std::int32_t group, Bits bits) {
    words[group * kGroup / 64] |= std::uint64_t{bits} << (group * kGroup % 64);
  }

  static Bits get(const std::uint64_t* words, std::int32_t group) {
    return static_cast<Bits>(words[group * kGroup / 64] >> (group * kGroup % 64)) & kWholeGroup;
  }

  void first_stage(std::int32_t row) const {
    std::uint64_t* alive = scratch_.alive + row * words_;
    std::uint64_t* rejected = scratch_.rejected + row * words_;
    for (std::int32_t word = 0; word < words_; ++word) alive[word] = rejected[word] = 0;
    for (std::int32_t group = 0; group < groups_; ++group) {
      const std::int32_t left = rows_.windows - group * kGroup;
      const Bits present = left >= kGroup ? kWholeGroup : (Bits{1} << left) - 1;
      const std::int32_t place = place_of(row, group);
      float* norms = norms_of(row, group);
      const Bits tested = present & measure_contrast(place, norms);
      if (tested == 0) continue;
      const Bits survivors = group_survivors(plan_.stages[0], place, norms, tested);
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

  void drop_skipped(std::int32_t row) const {
    std::uint64_t* alive = scratch_.alive + row * words_;
    const std::uint64_t* rejected = scratch_.rejected + row * words_;
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

  void wait(std::int32_t stage, std::int32_t place, std::int32_t norm_place, Bits alive) const {
    WaitingWindows& waiting = scratch_.waiting[stage];
    waiting.places[waiting.count] = place;
    waiting.norm_places[waiting.count] = norm_place;
    waiting.alive[waiting.count] = static_cast<std::uint8_t>(alive);
    ++waiting.count;
  }

  // Where the first of the eights starts that cover a group's windows alive: at an even window, as
  // even and odd norms are stored apart, and not so late that the eight would leave the group.
  static std::int32_t first_eight(Bits alive) {
    const std::int32_t window = lowest(alive) & ~1;
    return window > kGroup - kEight ? kGroup - kEight : window;
  }

  static Bits without_eight(Bits alive, std::int32_t window) {
    return alive & ~(Bits{0xFF} << window);
  }

  static std::int32_t eights_needed(Bits alive) {
    std::int32_t needed = 0;
    for (; alive != 0; alive = without_eight(alive, first_eight(alive))) ++needed;
    return needed;
  }

  // Takes a group through stages for as long as that is worthwhile. Windows still alive then wait.
  void advance_group(std::int32_t row, std::int32_t group, Bits alive) const {
    const std::int32_t place = place_of(row, group);
    const float* norms = norms_of(row, group);
    std::int32_t stage = 1;
    while (stage < plan_.stage_count && eights_needed(alive) >= kWorthAGroup) {
      alive = group_survivors(plan_.stages[stage], place, norms, alive);
      ++stage;
    }
    const auto norm_place = static_cast<std::int32_t>(norms - scratch_.norms);
    while (alive != 0) {
      const std::int32_t window = first_eight(alive);
      wait(stage, place + window, norm_place + window / 2, alive >> window & 0xFFU);
      alive = without_eight(alive, window);
    }
  }

  // Fills up the last group of eights with ones that have no window alive.
  static void pad(const WaitingWindows& waiting) {
    for (std::int32_t i = waiting.count; i % kEights != 0; ++i) {
      waiting.places[i] = waiting.places[waiting.count - 1];
      waiting.norm_places[i] = waiting.norm_places[waiting.count - 1];
      waiting.alive[i] = 0;
    }
  }

  // Takes the windows that wait for a stage through it. Those that pass wait for the next one.
  void advance_waiting(std::int32_t stage) const {
    const WaitingWindows& waiting = scratch_.waiting[stage];
    pad(waiting);
    for (std::int32_t i = 0; i < waiting.count; i += kEights) {
      Bits alive = 0;
      for (std::int32_t eight = 0; eight < kEights; ++eight) {
        alive |= Bits{waiting.alive[i + eight]} << (kEight * eight);
      }
      alive = scattered_survivors(plan_.stages[stage], waiting.places + i, waiting.norm_places + i,
                                  alive);
      for (std::int32_t eight = 0; eight < kEights; ++eight) {
        const Bits its_alive = alive >> (kEight * eight) & 0xFFU;
        if (its_alive == 0) continue;
        wait(stage + 1, waiting.places[i + eight], waiting.norm_places[i + eight], its_alive);
      }
    }
  }

  void scan() const {
    for (std::int32_t stage = 0; stage <= plan_.stage_count; ++stage) {
      scratch_.waiting[stage].count = 0;
    }
    for (std::int32_t row = 0; row < rows_.row_count; ++row) {
      first_stage(row);
      drop_skipped(row);
      for (std::int32_t group = 0; group < groups_; ++group) {
        const Bits alive = get(scratch_.alive + row * words_, group);
        if (alive != 0) advance_group(row, group, alive);
      }
    }
    for (std::int32_t stage = 1; stage < plan_.stage_count; ++stage) advance_waiting(stage);
  }

  const PlanView& plan_;
  const LayerView& layer_;
  const WindowRows& rows_;
  const ScanScratch& scratch_;
  std::int32_t groups_;
  std::int32_t words_;
};

}  // namespace halcyra::haar
