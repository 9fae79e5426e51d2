// What a scan needs to know of a cascade, wherever its windows' entries stand.
#pragma once

#include "face_pipeline/haar/scan_plan.hpp"
#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

// A plan that place_plan makes ready for a kind of layer: its offsets are indices of corners, see
// CornerIndex. Takes some milliseconds.
ScanPlan plan_cascade(const StumpCascade& cascade);

}  // namespace halcyra::haar
