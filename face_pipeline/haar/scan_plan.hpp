// A cascade prepared for the scan of layers with one layout and one step.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <opencv2/core/types.hpp>

#include "face_pipeline/haar/pyramid_layer.hpp"
#include "face_pipeline/haar/scan_records.hpp"

namespace halcyra::haar {

// What a PlanView shows. Before place_plan, offsets are indices of corners, and there are no
// batches.
struct ScanPlan {
  cv::Size window;
  std::vector<PlannedStage> stages;
  std::vector<PlannedStump> stumps;
  std::vector<QuickStage> quick_stages;
  std::vector<QuickStump> quick_stumps;
  std::vector<QuickStump> packed_quick_stumps;
  std::vector<QuickAnyStump> quick_any;
  std::vector<PatchBlock> blocks;
  std::vector<AnyFeature> features;
  std::vector<ExactStump> exact;
  std::array<std::int32_t, 4> norm_corners{};
  double norm_area = 0.0;
  float largest_norm = 0.0F;
  float deviation_unit = 0.0F;

  PlanView view() const;  // valid until the plan changes or is destroyed
};

// The columns of a layer that windows start at: `first` and then every `step`-th one.
struct WindowColumns {
  int step = 1;   // 1 or 2
  int first = 0;  // below the step
};

// What packing windows into batches costs.
struct PackingCost {
  int group = 0;       // windows in a vector, and in a batch
  double block = 0.0;  // of copying a block for one window, in stumps of a whole vector
};

// Replaces the corners in a plan of plan_cascade by the offsets of their entries, and plans the
// batches. Takes a fraction of a millisecond.
ScanPlan place_plan(const ScanPlan& by_corner, const PlaneLayout& layout,
                    const WindowColumns& columns, const PackingCost& packing);

}  // namespace halcyra::haar
