// The votes of a stage's stumps on a group of windows, written once for vectors of any length.
// Everything here is a template over the vectors' type, see window_scan_loop.hpp.
#pragma once

#include <cstdint>

#include "face_pipeline/haar/scan_records.hpp"

namespace halcyra::haar {

// Norms are stored divided by this, as the vectors' values are multiplied by it.
constexpr float kNormScale = 65536.0F;

// The sums of a group's votes: of all stumps of a stage but those of kAnyShape.
template <class Lanes>
class StageVotes {
 public:
  using Shorts = typename Lanes::Shorts;
  using Ints = typename Lanes::Ints;
  using Floats = typename Lanes::Floats;

  StageVotes(const Floats& even_norms, const Floats& odd_norms)
      : even_norms_(even_norms), odd_norms_(odd_norms), even_(Ints::all(0)), odd_(Ints::all(0)) {}

  // `stumps` is the plan's array that has the windows' offsets.
  template <class Windows>
  void vote(const PlannedStage& stage, const PlannedStump* stumps, const Windows& windows) {
    even_ = odd_ = Ints::all(stage.start);
    const PlannedStump* stump = stumps + stage.first;
    for (; stump < stumps + stage.ends[kHalves]; ++stump) {
      add(*stump, halves(windows, stump->offsets));
    }
    for (; stump < stumps + stage.ends[kThirds]; ++stump) {
      add(*stump, thirds(windows, stump->offsets));
    }
    for (; stump < stumps + stage.ends[kChecks]; ++stump) {
      const Checks parts = checks(windows, stump->offsets);
      add(*stump, parts.upper.plus(parts.lower));
    }
    const Shorts zero = Shorts::all(0);
    for (; stump < stumps + stage.ends[kInverseChecks]; ++stump) {
      const Checks parts = checks(windows, stump->offsets);
      add(*stump, (zero - parts.upper).plus(zero - parts.lower));
    }
  }

  // A bit for each window of the group.
  std::uint32_t below(std::int32_t limit) const {
    return Lanes::interleave(even_.below(limit), odd_.below(limit));
  }
  std::uint32_t above(std::int32_t limit) const {
    return Lanes::interleave(even_.above(limit), odd_.above(limit));
  }

  // The even windows' sums, then the odd ones'.
  void store(std::int32_t* sums) const {
    even_.store(sums);
    odd_.store(sums + Lanes::kLanes);
  }

 private:
  // Sums over rectangles have 16 bits without a sign. With half of the range subtracted from both,
  // their difference saturates like one of numbers with a sign.
  template <class Windows>
  static Shorts halves(const Windows& at, const std::int32_t* o) {
    const Shorts middle = at.low(o[2]) - at.low(o[3]) + Shorts::all(0x8000);
    return (at.low(o[0]) - at.low(o[1]) - middle).minus(middle - (at.low(o[4]) - at.low(o[5])));
  }

  template <class Windows>
  static Shorts thirds(const Windows& at, const std::int32_t* o) {
    const Shorts second = at.low(o[2]) - at.low(o[3]);
    const Shorts third = at.low(o[4]) - at.low(o[5]);
    const Shorts middle = third - second;
    return (middle - (second - (at.low(o[0]) - at.low(o[1]))))
        .plus(middle - (at.low(o[6]) - at.low(o[7]) - third));
  }

  // The difference of the upper two of four rectangles and that of the lower two.
  struct Checks {
    Shorts upper;
    Shorts lower;
  };

  template <class Windows>
  static Checks checks(const Windows& at, const std::int32_t* o) {
    const Shorts centre = at.low(o[4]);
    const Shorts sides = at.low(o[3]) + at.low(o[5]);
    const Shorts above = centre - at.low(o[1]);
    const Shorts below = centre - at.low(o[7]);
    return {at.low(o[0]) + at.low(o[2]) - sides + (above + above),
            at.low(o[6]) + at.low(o[8]) - sides + (below + below)};
  }

  void add(const PlannedStump& stump, const Shorts& values) {
    even_.add_where_below(values.even_floats() * even_norms_, stump.threshold, stump.gain);
    odd_.add_where_below(values.odd_floats() * odd_norms_, stump.threshold, stump.gain);
  }

  Floats even_norms_;
  Floats odd_norms_;
  Ints even_;
  Ints odd_;
};

}  // namespace halcyra::haar
