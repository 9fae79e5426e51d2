// A cascade made ready for the scan of one kind of layer.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "face_pipeline/haar/pyramid_layer.hpp"
#include "face_pipeline/haar/scan_records.hpp"
#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

struct ScanPlan {
  cv::Size window;
  std::vector<PlannedStage> stages;
  std::vector<PlannedStump> stumps;
  std::vector<AnyFeature> any;
  std::vector<ExactStump> exact;
  std::array<std::int32_t, 4> norm_corners{};
  double norm_area = 0.0;
  float largest_norm = 0.0F;

  PlanView view() const;  // valid as long as the plan is not changed
};

// How windows and columns go together in a layer.
struct WindowColumns {
  int step = 1;   // from window to window
  int first = 0;  // where windows start; below the step
};

ScanPlan plan_scan(const StumpCascade& cascade, const PlaneLayout& layout,
                   const WindowColumns& columns);

}  // namespace halcyra::haar
