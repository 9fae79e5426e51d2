// A boosted cascade of one-node trees over upright rectangle sums.
#pragma once

#include <array>
#include <vector>

#include <opencv2/core/types.hpp>

namespace halcyra::haar {

struct WeightedRect {
  cv::Rect area;  // pixels of the search window
  int weight = 0;
};

using RectFeature = std::array<WeightedRect, 3>;  // unused ones have weight 0

struct Stump {
  int feature = 0;  // index into StumpCascade::features
  float threshold = 0.0F;
  float below = 0.0F;      // added to the stage's sum if the value is below the threshold
  float not_below = 0.0F;  // added otherwise
};

struct CascadeStage {
  float threshold = 0.0F;  // the sum must reach it
  std::vector<Stump> stumps;
};

struct StumpCascade {
  cv::Size window;
  std::vector<RectFeature> features;
  std::vector<CascadeStage> stages;
};

}  // namespace halcyra::haar
