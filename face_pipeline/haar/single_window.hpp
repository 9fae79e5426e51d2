// What is decided for one window at a time: votes that need more than 16 bits, and sums that are
// too close to a stage's threshold. A template over the vectors' type, see window_scan_loop.hpp.
#pragma once

#include <cmath>
#include <cstdint>

#include "face_pipeline/haar/scan_records.hpp"
#include "face_pipeline/haar/stage_votes.hpp"

namespace halcyra::haar {

template <class Lanes>
class SingleWindow {
 public:
  // `place` is the index of the entry at the window's upper left corner.
  SingleWindow(const PlanView& plan, const LayerView& layer, std::int32_t place)
      : plan_(&plan), sums_(layer.sums + place), square_sums_(layer.square_sums + place) {}

  // The factor that normalises the window's values. Infinite or not a number without contrast.
  float norm() const {
    const double sum = rectangle(sums_);
    const double squares = rectangle(square_sums_);
    return static_cast<float>(1.0 / std::sqrt(plan_->norm_area * squares - sum * sum));
  }

  // In OpenCV's order and types, given the norm.
  bool passes_exactly(const PlannedStage& stage, float norm) const {
    double sum = 0.0;
    for (std::int32_t i = 0; i < stage.exact_count; ++i) {
      const ExactStump& exact = plan_->exact[stage.first_exact + i];
      const float value = value_of(exact.feature) * norm;
      const float vote = value < exact.threshold ? exact.below : exact.not_below;
      sum += static_cast<double>(vote);
    }
    return !(sum < static_cast<double>(stage.threshold));
  }

  // Given the sum of the votes of all stumps but those of kAnyShape.
  bool passes(const PlannedStage& stage, std::int32_t sum) const {
    const float factor = norm();
    for (std::int32_t i = stage.ends[kInverseChecks]; i < stage.ends[kAnyShape]; ++i) {
      const PlannedStump& stump = plan_->stumps[i];
      if (value_of(stump.offsets[0]) * factor < stump.threshold) sum += stump.gain;
    }
    if (sum > stage.surely_above) return true;
    return sum >= stage.surely_below && passes_exactly(stage, factor);
  }

  // Likewise for a quick test; see QuickAnyStump for the margin.
  bool may_pass(const QuickStage& stage, std::int32_t sum, std::int32_t deviation) const {
    for (std::int32_t i = stage.first_any; i < stage.end_any; ++i) {
      const QuickAnyStump& stump = plan_->quick_any[i];
      const float value = value_of(stump.feature);
      const float limit = stump.threshold * static_cast<float>(deviation);
      const bool counts =
          stump.gains_below ? value < limit + stump.margin : !(value < limit - stump.margin);
      if (counts) sum += stump.gain;
    }
    return sum > stage.limit;
  }

 private:
  // Unsigned on the way, as sums of squares wrap around.
  std::int32_t rectangle(const std::int32_t* entries) const {
    const std::int32_t* o = plan_->norm_corners;
    const auto entry = [&](int i) { return static_cast<std::uint32_t>(entries[o[i]]); };
    return static_cast<std::int32_t>(entry(0) - entry(1) - entry(2) + entry(3));
  }

  float value_of(std::int32_t feature) const {
    const AnyFeature& any = plan_->features[feature];
    std::uint32_t value = 0;
    for (int i = 0; i < 3; ++i) {
      const std::int32_t* o = any.corners[i];
      value += (entry(o[0]) - entry(o[1]) - entry(o[2]) + entry(o[3])) *
               static_cast<std::uint32_t>(any.weights[i]);
    }
    return static_cast<float>(static_cast<std::int32_t>(value));
  }

  std::uint32_t entry(std::int32_t offset) const {
    return static_cast<std::uint32_t>(sums_[offset]);
  }

  const PlanView* plan_;
  const std::int32_t* sums_;
  const std::int32_t* square_sums_;
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
