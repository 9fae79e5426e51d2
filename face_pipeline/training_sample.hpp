// A picture of the owner, for training the recogniser.
#pragma once

#include <string>

#include <opencv2/core/mat.hpp>

namespace halcyra {

struct TrainingSample {
  cv::Mat image;     // 8-bit grey, 160 x 160, not equalised
  int label = 1;     // class label; the owner is the only class
  std::string path;  // relative to the samples folder, with '/' between components
  // The name of the folder that holds the file, "flat" for the samples folder itself.
  std::string stage;
};

}  // namespace halcyra
