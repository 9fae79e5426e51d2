// A part of a search, for one thread.
#pragma once

#include <vector>

#include <opencv2/core/types.hpp>

#include "face_pipeline/haar/pyramid_layer.hpp"
#include "face_pipeline/haar/scan_plan.hpp"
#include "face_pipeline/haar/scan_records.hpp"

namespace halcyra::haar {

// Some rows of windows of one layer.
struct SearchTask {
  const PyramidLayer* layer = nullptr;
  const ScanPlan* plan = nullptr;
  WindowRows rows{};
  std::vector<cv::Rect> found;  // in pixels of the picture, in the order in which OpenCV finds them
};

}  // namespace halcyra::haar
