// One face as a cascade found it, before or after overlapping hits were merged.
#pragma once

#include <string>

#include <opencv2/core/types.hpp>

namespace halcyra {

struct Detection {
  cv::Rect box;               // pixels of the full-resolution grey image
  std::string detector_type;  // "frontal", "profile_left" or "profile_right"
};

}  // namespace halcyra
