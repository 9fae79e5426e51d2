// The dashboard that a test expects in the window, compared pixel by pixel.
#pragma once

#include <ctime>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "app/run_state/options.hpp"
#include "app/run_state/runtime_status.hpp"
#include "face_pipeline/face_info.hpp"

namespace halcyra {

struct ExpectedDashboard {
  Options options;       // with the size of the window and the font scale of the run
  RuntimeStatus status;  // all but the events
  cv::Mat color;
  cv::Mat infrared;
  cv::Mat depth;
  std::vector<FaceInfo> faces;
  std::vector<std::string> messages;  // of the event log, newest first
  std::time_t from = 0;               // no event is older
};

// "" when the picture is exactly that dashboard, else what differs. The times of the events are
// taken from the picture.
std::string difference(const cv::Mat& picture, const ExpectedDashboard& expected);

}  // namespace halcyra
