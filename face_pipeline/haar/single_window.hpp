// What is decided for one window at a time: votes that need more than 16 bits, and sums that are
// too close to a stage's threshold. A template over the vectors' type, see window_scan_loop.hpp.
#pragma once

#include <cstdint>

#include "face_pipeline/haar/scan_records.hpp"
#include "face_pipeline/haar/stage_votes.hpp"

namespace halcyra::haar {

template <class Lanes>
class SingleWindow {
 public:
  // `place` is the index of the entry at the window's upper left corner; the norm is divided by
  // kNormScale.
  SingleWindow(const PlanView& plan, const LayerView& layer, std::int32_t place, float norm)
      : plan_(plan), sums_(layer.sums + place), norm_(norm * kNormScale) {}

  // Given the sum of the votes of all stumps but those of kAnyShape.
  bool passes(const PlannedStage& stage, std::int32_t sum) const {
    for (std::int32_t i = stage.ends[kInverseChecks]; i < stage.ends[kAnyShape]; ++i) {
      const PlannedStump& stump = plan_.stumps[i];
      if (value_of(plan_.features[stump.offsets[0]]) < stump.threshold) sum += stump.gain;
    }
    if (sum > stage.surely_above) return true;
    return sum >= stage.surely_below && passes_exactly(stage);
  }

  // In OpenCV's order and types.
  bool passes_exactly(const PlannedStage& stage) const {
    double sum = 0.0;
    for (std::int32_t i = 0; i < stage.exact_count; ++i) {
      const ExactStump& exact = plan_.exact[stage.first_exact + i];
      const float value = value_of(plan_.features[exact.feature]);
      const float vote = value < exact.threshold ? exact.below : exact.not_below;
      sum += static_cast<double>(vote);
    }
    return !(sum < static_cast<double>(stage.threshold));
  }

 private:
  std::uint32_t entry(std::int32_t offset) const {
    return static_cast<std::uint32_t>(sums_[offset]);
  }

  float value_of(const AnyFeature& feature) const {
    std::uint32_t value = 0;
    for (int i = 0; i < 3; ++i) {
      const std::int32_t* o = feature.corners[i];
      value += (entry(o[0]) - entry(o[1]) - entry(o[2]) + entry(o[3])) *
               static_cast<std::uint32_t>(feature.weights[i]);
    }
    return static_cast<float>(static_cast<std::int32_t>(value)) * norm_;
  }

  const PlanView& plan_;
  const std::int32_t* sums_;
  float norm_;
};

// Survivors of a stage among the windows alive, given the votes on their group. `single` makes the
// SingleWindow of a window of the group. Even windows' sums come before the odd ones'.
template <class Lanes, class Single>
std::uint32_t stage_survivors(const PlannedStage& stage, const StageVotes<Lanes>& votes,
                              std::uint32_t alive, Single single) {
  std::uint32_t survivors = alive & votes.above(stage.early_above);
  std::uint32_t open = alive & ~survivors & ~votes.below(stage.early_below);
  if (open == 0) return survivors;
  std::int32_t sums[kLargestGroup];
  votes.store(sums);
  for (; open != 0; open &= open - 1) {
    const std::int32_t window = __builtin_ctz(open);
    if (single(window).passes(stage, sums[window / 2 + window % 2 * Lanes::kLanes])) {
      survivors |= std::uint32_t{1} << window;
    }
  }
  return survivors;
}

}  // namespace halcyra::haar
