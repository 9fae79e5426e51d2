// In which order a cascade's stages reject windows soonest.
#pragma once

#include <vector>

#include "face_pipeline/haar/scan_records.hpp"

namespace halcyra::haar {

// Rows of windows to take samples from. The plans are of one cascade, or of it and its mirror
// image.
struct SampledRows {
  PlanView plan;
  LayerView layer;
  WindowRows rows;
};

// A window passes a cascade if it passes all stages, so their order is free. Only the first one has
// to stay first, as the windows that it rejects decide which ones are skipped.
//
// Returns a permutation of the stages' indices that begins with 0. Each next stage is the one that,
// of the sampled windows that passed those before it, rejects the most for each of its stumps.
// Where few samples are left, stages follow in the cascade's own order. Returns nothing if too few
// windows of these rows pass the first stage to tell; the rows are sampled all over. The same rows
// always give the same order. Takes some milliseconds.
std::vector<int> quickest_stage_order(const std::vector<SampledRows>& rows);

}  // namespace halcyra::haar
