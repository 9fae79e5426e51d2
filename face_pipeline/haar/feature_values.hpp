// The values of features for a group of windows, in 16 bits. A template over the vectors' type, see
// window_scan_loop.hpp.
#pragma once

#include <cstdint>

#include "face_pipeline/haar/scan_records.hpp"

namespace halcyra::haar {

// Of all shapes but kAnyShape. `Windows` gives the entries of the group at an offset.
template <class Lanes, class Windows>
class FeatureValues {
 public:
  using Shorts = typename Lanes::Shorts;

  explicit FeatureValues(const Windows& windows) : at_(windows) {}

  // Calls use(stump, values) for each stump from `first` on. The shapes follow in their order, and
  // `ends` has for each of them the index after its last stump.
  template <class Stump, class Use>
  void for_each(const Stump* stumps, std::int32_t first, const std::int32_t* ends, Use use) const {
    const Stump* stump = stumps + first;
    for (; stump < stumps + ends[kHalves]; ++stump) use(*stump, halves(stump->offsets));
    for (; stump < stumps + ends[kThirds]; ++stump) use(*stump, thirds(stump->offsets));
    for (; stump < stumps + ends[kChecks]; ++stump) {
      const Checks parts = checks(stump->offsets);
      use(*stump, parts.upper.plus(parts.lower));
    }
    const Shorts zero = Shorts::all(0);
    for (; stump < stumps + ends[kInverseChecks]; ++stump) {
      const Checks parts = checks(stump->offsets);
      use(*stump, (zero - parts.upper).plus(zero - parts.lower));
    }
  }

 private:
  // Sums over rectangles have 16 bits without a sign. With half of the range subtracted from both,
  // their difference saturates like one of numbers with a sign.
  Shorts halves(const std::int32_t* o) const {
    const Shorts middle = at_.low(o[2]) - at_.low(o[3]) + Shorts::all(0x8000);
    return (at_.low(o[0]) - at_.low(o[1]) - middle).minus(middle - (at_.low(o[4]) - at_.low(o[5])));
  }

  Shorts thirds(const std::int32_t* o) const {
    const Shorts second = at_.low(o[2]) - at_.low(o[3]);
    const Shorts third = at_.low(o[4]) - at_.low(o[5]);
    const Shorts middle = third - second;
    return (middle - (second - (at_.low(o[0]) - at_.low(o[1]))))
        .plus(middle - (at_.low(o[6]) - at_.low(o[7]) - third));
  }

  // The difference of the upper two of four rectangles and that of the lower two.
  struct Checks {
    Shorts upper;
    Shorts lower;
  };

  Checks checks(const std::int32_t* o) const {
    const Shorts centre = at_.low(o[4]);
    const Shorts sides = at_.low(o[3]) + at_.low(o[5]);
    const Shorts above = centre - at_.low(o[1]);
    const Shorts below = centre - at_.low(o[7]);
    return {at_.low(o[0]) + at_.low(o[2]) - sides + (above + above),
            at_.low(o[6]) + at_.low(o[8]) - sides + (below + below)};
  }

  const Windows& at_;
};

}  // namespace halcyra::haar
