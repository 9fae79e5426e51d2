// Plans the quick tests of a cascade's stages, see QuickStump.
#pragma once

#include <vector>

#include <opencv2/core/types.hpp>

#include "face_pipeline/haar/feature_shape.hpp"
#include "face_pipeline/haar/scan_plan.hpp"
#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

// A window's deviation is `unit` divided by its norm, rounded to a whole number.
struct Deviations {
  double unit = 0.0;             // exactly a float
  double least = 0.0;            // of windows with enough contrast
  double largest_inverse = 0.0;  // of all windows' norms
};

// For contrasts measured in a part of the window of this size. The unit is 1 or so much less that
// the largest deviation fits into 16 bits.
Deviations deviations_of(const cv::Size& measured);

// Adds a stage to a plan whose offsets are indices of corners. `shapes` has those of the cascade's
// features.
void add_quick_stage(const CascadeStage& stage, const std::vector<ShapedFeature>& shapes,
                     const Deviations& deviations, const CornerIndex& index, ScanPlan& plan);

}  // namespace halcyra::haar
