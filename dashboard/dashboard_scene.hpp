// Everything that one picture of the dashboard shows. Read-only; lives as long as the drawing call.
#pragma once

#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "app/run_state/runtime_status.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

struct DashboardScene {
  const cv::Mat& color;  // each picture is BGR and empty when there is none
  const cv::Mat& infrared;
  const cv::Mat& depth;
  const RuntimeStatus& status;
  const Options& options;
  const std::vector<FaceInfo>& faces;
  std::string view;   // canonical name of the view, never empty
  std::string label;  // its upper-case label
};

}  // namespace halcyra
