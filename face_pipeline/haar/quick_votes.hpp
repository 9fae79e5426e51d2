// A quick test of a stage in 16 bits, which no window fails that passes the stage. A template over
// the vectors' type, see window_scan_loop.hpp.
#pragma once

#include <cstdint>

#include "face_pipeline/haar/feature_values.hpp"
#include "face_pipeline/haar/scan_records.hpp"
#include "face_pipeline/haar/single_window.hpp"

namespace halcyra::haar {

// Upper bounds of the sums of a group's votes: of all stumps of a stage but those of kAnyShape.
template <class Lanes>
class QuickVotes {
 public:
  using Shorts = typename Lanes::Shorts;

  explicit QuickVotes(const Shorts& deviations)
      : deviations_(deviations), sums_(Shorts::all(kQuickStart)) {}

  // `stumps` is the plan's array that has the windows' offsets.
  template <class Windows>
  void vote(const QuickStage& stage, const QuickStump* stumps, const Windows& windows) {
    FeatureValues<Lanes, Windows>(windows).for_each(
        stumps, stage.first, stage.ends, [this](const QuickStump& stump, const Shorts& values) {
          const Shorts limits = deviations_.times(Shorts::all_pairs(stump.threshold));
          sums_.add_where_at_most(values, limits, Shorts::all_pairs(stump.gain));
        });
  }

  // Those of the windows alive that may pass the stage. `single` makes the SingleWindow of a window
  // of the group.
  template <class Single>
  std::uint32_t survivors(const QuickStage& stage, std::uint32_t alive, Single single) const {
    alive &= sums_.above(stage.open_limit);
    if (stage.first_any == stage.end_any) return alive;
    std::uint32_t open = alive & ~sums_.above(stage.limit);
    if (open == 0) return alive;
    std::int16_t sums[kLargestGroup];
    std::int16_t deviations[kLargestGroup];
    sums_.store(sums);
    deviations_.store(deviations);
    for (; open != 0; open &= open - 1) {
      const std::int32_t window = __builtin_ctz(open);
      if (!single(window).may_pass(stage, sums[window], deviations[window])) {
        alive &= ~(std::uint32_t{1} << window);
      }
    }
    return alive;
  }

 private:
  Shorts deviations_;
  Shorts sums_;
};

}  // namespace halcyra::haar
