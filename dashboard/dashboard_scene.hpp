// Everything that one picture of the dashboard shows. Holds references, so it must not outlive the
// call that draws it.
#pragma once

#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "app/run_state/runtime_status.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

struct DashboardScene {
  const cv::Mat& color;  // 8-bit BGR like the two below; empty when there is no picture
  const cv::Mat& infrared;
  const cv::Mat& depth;
  const RuntimeStatus& status;
  const Options& options;
  const std::vector<FaceInfo>& faces;
  std::string view;   // canonical name of the view, never empty
  std::string label;  // its upper-case label
};

}  // namespace halcyra
