// One face of the current frame: where it is, how good its picture is, and whose it may be.
#pragma once

#include <string>

#include <opencv2/core/types.hpp>

namespace halcyra {

struct FaceInfo {
  cv::Rect box;       // pixels of the colour frame, inside it
  int person_id = 0;  // 1-based position in the frame's list
  cv::Scalar color = cv::Scalar(80, 160, 240, 0);
  std::string detector_type = "none";
  std::string label = "Unknown";  // "Unknown", "CandidateDorran" or "ConfirmedDorran"
  std::string stage = "unknown";  // of the nearest training sample
  double confidence = 0.0;        // LBPH distance, lower is nearer; 0 when not predicted
  double sharpness = 0.0;         // variance of the Laplacian
  double brightness = 0.0;        // mean grey level
  double contrast = 0.0;          // standard deviation of the grey levels
  std::string quality = "no_face";
};

}  // namespace halcyra
