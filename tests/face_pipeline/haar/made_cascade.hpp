// Random cascades whose thresholds are values of a picture's windows, so that these windows lie
// exactly at a threshold.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "face_pipeline/haar/stump_cascade.hpp"

namespace halcyra::haar {

// ---- A window's values, in OpenCV's arithmetic.

inline int sum_over(const cv::Mat& pixels, const cv::Rect& area) {
  return static_cast<int>(cv::sum(pixels(area))[0]);
}

inline float contrast_norm(const cv::Mat& window) {
  const cv::Mat inner = window(cv::Rect(1, 1, window.cols - 2, window.rows - 2));
  const double sum = cv::sum(inner)[0];
  const double contrast = static_cast<double>(inner.total()) * inner.dot(inner) - sum * sum;
  return contrast > 0.0 ? static_cast<float>(1.0 / std::sqrt(contrast)) : 1.0F;
}

inline float value_of(const RectFeature& feature, const cv::Mat& window) {
  int value = 0;
  for (const WeightedRect& rect : feature) {
    if (rect.weight != 0) value += rect.weight * sum_over(window, rect.area);
  }
  return static_cast<float>(value) * contrast_norm(window);
}

inline double sum_of(const CascadeStage& stage, const StumpCascade& cascade,
                     const cv::Mat& window) {
  double sum = 0.0;
  for (const Stump& stump : stage.stumps) {
    const float value = value_of(cascade.features[static_cast<std::size_t>(stump.feature)], window);
    sum += static_cast<double>(value < stump.threshold ? stump.below : stump.not_below);
  }
  return sum;
}

// ---- Random cascades.

inline WeightedRect weighted(int x, int y, int width, int height, int weight) {
  return {cv::Rect(x, y, width, height), weight};
}

// Of every shape that has a short form and of others, small ones and one as large as the window.
inline RectFeature random_feature(const cv::Size& window, cv::RNG& random) {
  const int w = random.uniform(1, window.width / 3 + 1);
  const int h = random.uniform(1, window.height / 3 + 1);
  const int x = random.uniform(0, window.width - 3 * w + 1);
  const int y = random.uniform(0, window.height - 3 * h + 1);
  switch (random.uniform(0, 6)) {
    case 0:
      return {weighted(x, y, 2 * w, h, -1), weighted(x + w, y, w, h, 2), {}};
    case 1:
      return {weighted(x, y, 3 * w, h, -1), weighted(x + w, y, w, h, 3), {}};
    case 2:
      return {weighted(x, y, 2 * w, 2 * h, -1), weighted(x + w, y, w, h, 2),
              weighted(x, y + h, w, h, 2)};
    case 3:
      return {weighted(x, y, 2 * w, 2 * h, -1), weighted(x, y, w, h, 2),
              weighted(x + w, y + h, w, h, 2)};
    case 4:
      return {weighted(x, y, 3 * w, 3 * h, -1), weighted(x + w, y + h, w, h, 9), {}};
    default:
      return {weighted(0, 0, window.width, window.height, -1),
              weighted(0, 0, window.width, window.height / 2, 2),
              {}};
  }
}

// Of the same shapes, but as large as fits. The values of many do not fit into 16 bits.
inline RectFeature random_large_feature(const cv::Size& window, cv::RNG& random) {
  const bool upright = random.uniform(0, 2) == 0;
  const int parts = random.uniform(2, 4);
  const int w = upright ? window.width / parts : random.uniform(window.width / 2, window.width + 1);
  const int h =
      upright ? random.uniform(window.height / 2, window.height + 1) : window.height / parts;
  const int sign = random.uniform(0, 2) == 0 ? 1 : -1;
  const cv::Point step = upright ? cv::Point(w, 0) : cv::Point(0, h);
  if (random.uniform(0, 3) == 0) {
    const int x = window.width / 2;
    const int y = window.height / 2;
    return {weighted(0, 0, 2 * x, 2 * y, -sign), weighted(x, 0, x, y, 2 * sign),
            weighted(0, y, x, y, 2 * sign)};
  }
  const int part = parts == 3 ? 1 : random.uniform(0, 2);
  return {weighted(0, 0, w + (parts - 1) * step.x, h + (parts - 1) * step.y, -sign),
          weighted(part * step.x, part * step.y, w, h, parts * sign),
          {}};
}

inline cv::Mat random_window(const cv::Mat& picture, const cv::Size& window, cv::RNG& random) {
  return picture(cv::Rect(cv::Point(2 * random.uniform(0, (picture.cols - window.width) / 2 + 1),
                                    2 * random.uniform(0, (picture.rows - window.height) / 2 + 1)),
                          window));
}

using FeatureMaker = RectFeature(const cv::Size& window, cv::RNG& random);

inline StumpCascade cascade_for(const cv::Mat& picture, const cv::Size& window, int most_stumps,
                                cv::RNG& random, FeatureMaker make_feature = random_feature) {
  StumpCascade cascade;
  cascade.window = window;
  for (int stage = 0; stage < 3; ++stage) {
    CascadeStage made;
    for (int i = random.uniform(1, most_stumps + 1); i > 0; --i) {
      Stump stump;
      stump.feature = static_cast<int>(cascade.features.size());
      cascade.features.push_back(make_feature(window, random));
      stump.threshold = value_of(cascade.features.back(), random_window(picture, window, random));
      stump.below = random.uniform(-1.0F, 1.0F);
      stump.not_below = random.uniform(-1.0F, 1.0F);
      made.stumps.push_back(stump);
    }
    const cv::Mat at = random_window(picture, window, random);
    made.threshold =
        static_cast<float>(sum_of(made, cascade, at)) - 0.3F * static_cast<float>(stage % 2);
    cascade.stages.push_back(made);
  }
  return cascade;
}

// ---- Writing them. OpenCV lowers each stage's threshold by 1e-5 when it loads a file.

inline void write_stump(cv::FileStorage& file, const Stump& stump) {
  file << "{"
       << "internalNodes"
       << "[:" << 0 << -1 << stump.feature << stump.threshold << "]";
  file << "leafValues"
       << "[:" << stump.below << stump.not_below << "]"
       << "}";
}

inline void write_feature(cv::FileStorage& file, const RectFeature& feature) {
  file << "{"
       << "rects"
       << "[";
  for (const WeightedRect& rect : feature) {
    if (rect.weight == 0) continue;
    file << "[:" << rect.area.x << rect.area.y << rect.area.width << rect.area.height
         << static_cast<float>(rect.weight) << "]";
  }
  file << "]"
       << "tilted" << 0 << "}";
}

inline void write_cascade(const std::string& path, const StumpCascade& cascade) {
  cv::FileStorage file(path, cv::FileStorage::WRITE);
  file << "cascade"
       << "{"
       << "stageType"
       << "BOOST"
       << "featureType"
       << "HAAR";
  file << "height" << cascade.window.height << "width" << cascade.window.width;
  file << "featureParams"
       << "{"
       << "maxCatCount" << 0 << "}"
       << "stages"
       << "[";
  for (const CascadeStage& stage : cascade.stages) {
    file << "{"
         << "stageThreshold" << stage.threshold + 1e-5F << "weakClassifiers"
         << "[";
    for (const Stump& stump : stage.stumps) write_stump(file, stump);
    file << "]"
         << "}";
  }
  file << "]"
       << "features"
       << "[";
  for (const RectFeature& feature : cascade.features) write_feature(file, feature);
  file << "]"
       << "}";
}

}  // namespace halcyra::haar
