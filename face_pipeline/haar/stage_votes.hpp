// The votes of a stage's stumps on a group of windows, written once for vectors of any length.
// Everything here is a template over the vectors' type, see window_scan_loop.hpp.
#pragma once

#include <cstdint>

#include "face_pipeline/haar/feature_values.hpp"
#include "face_pipeline/haar/scan_records.hpp"

namespace halcyra::haar {

// Vectors' values are multiplied by this, and their norms divided by it.
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

  template <class Windows>
  void vote(const PlannedStage& stage, const PlannedStump* stumps, const Windows& windows) {
    even_ = odd_ = Ints::all(stage.start);
    FeatureValues<Lanes, Windows>(windows).for_each(
        stumps, stage.first, stage.ends, [this](const PlannedStump& stump, const Shorts& values) {
          even_.add_where_below(values.even_floats() * even_norms_, stump.threshold, stump.gain);
          odd_.add_where_below(values.odd_floats() * odd_norms_, stump.threshold, stump.gain);
        });
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
  Floats even_norms_;
  Floats odd_norms_;
  Ints even_;
  Ints odd_;
};

}  // namespace halcyra::haar
