#include "face_pipeline/haar/cascade_file.hpp"

#include <cmath>
#include <cstddef>
#include <cstdlib>

#include <opencv2/core/persistence.hpp>

namespace halcyra::haar {
namespace {

// OpenCV lowers every stage's threshold by this much when it loads a cascade.
constexpr float kThresholdSlack = 1e-5F;

// Up to here, single precision holds every whole number exactly.
constexpr double kLargestExactSum = 16777216.0;

// A window's sum of squares is computed modulo 2^32 and read as a signed number.
constexpr double kLargestSquareSum = 2147483647.0;

constexpr double kBrightest = 255.0;

bool window_is_searchable(const cv::Size& window) {
  return window.width > 2 && window.height > 2 && window.width <= 1000 && window.height <= 1000 &&
         window.area() * kBrightest * kBrightest <= kLargestSquareSum;
}

std::optional<WeightedRect> read_rect(const cv::FileNode& node) {
  if (node.size() != 5) return std::nullopt;
  const auto weight = static_cast<float>(node[4]);
  if (!(std::abs(weight) <= 1000.0F) || std::trunc(weight) != weight) return std::nullopt;
  WeightedRect rect;
  rect.area = cv::Rect(static_cast<int>(node[0]), static_cast<int>(node[1]),
                       static_cast<int>(node[2]), static_cast<int>(node[3]));
  rect.weight = static_cast<int>(weight);
  return rect;
}

bool lies_in(const cv::Rect& area, const cv::Size& window) {
  return area.x >= 0 && area.y >= 0 && area.width >= 0 && area.height >= 0 &&
         area.width <= window.width - area.x && area.height <= window.height - area.y;
}

std::optional<RectFeature> read_feature(const cv::FileNode& node, const cv::Size& window) {
  const cv::FileNode rects = node["rects"];
  if (static_cast<int>(node["tilted"]) != 0) return std::nullopt;
  RectFeature feature;
  if (rects.size() < 2 || rects.size() > feature.size()) return std::nullopt;
  double largest_sum = 0.0;
  for (std::size_t i = 0; i < rects.size(); ++i) {
    const std::optional<WeightedRect> rect = read_rect(rects[static_cast<int>(i)]);
    if (!rect || !lies_in(rect->area, window)) return std::nullopt;
    feature[i] = *rect;
    largest_sum += std::abs(rect->weight) * kBrightest * rect->area.area();
  }
  if (largest_sum >= kLargestExactSum) return std::nullopt;
  return feature;
}

std::optional<Stump> read_stump(const cv::FileNode& node, std::size_t feature_count) {
  const cv::FileNode tree = node["internalNodes"];
  const cv::FileNode leaves = node["leafValues"];
  if (tree.size() != 4 || leaves.size() != 2) return std::nullopt;
  Stump stump;
  stump.feature = static_cast<int>(tree[2]);
  stump.threshold = static_cast<float>(tree[3]);
  stump.below = static_cast<float>(leaves[0]);
  stump.not_below = static_cast<float>(leaves[1]);
  const bool usable = stump.feature >= 0 &&
                      static_cast<std::size_t>(stump.feature) < feature_count &&
                      std::isfinite(stump.threshold) && std::abs(stump.below) < 1e4F &&
                      std::abs(stump.not_below) < 1e4F;
  if (!usable) return std::nullopt;
  return stump;
}

std::optional<CascadeStage> read_stage(const cv::FileNode& node, std::size_t feature_count) {
  CascadeStage stage;
  stage.threshold = static_cast<float>(node["stageThreshold"]) - kThresholdSlack;
  if (!(std::abs(stage.threshold) < 1e6F)) return std::nullopt;
  for (const cv::FileNode& weak : node["weakClassifiers"]) {
    const std::optional<Stump> stump = read_stump(weak, feature_count);
    if (!stump) return std::nullopt;
    stage.stumps.push_back(*stump);
  }
  if (stage.stumps.empty()) return std::nullopt;
  return stage;
}

bool read_features(const cv::FileNode& node, StumpCascade& cascade) {
  for (const cv::FileNode& each : node) {
    const std::optional<RectFeature> feature = read_feature(each, cascade.window);
    if (!feature) return false;
    cascade.features.push_back(*feature);
  }
  return !cascade.features.empty();
}

bool read_stages(const cv::FileNode& node, StumpCascade& cascade) {
  for (const cv::FileNode& each : node) {
    const std::optional<CascadeStage> stage = read_stage(each, cascade.features.size());
    if (!stage) return false;
    cascade.stages.push_back(*stage);
  }
  return !cascade.stages.empty();
}

bool is_haar_cascade(const cv::FileNode& root) {
  return root.isMap() && static_cast<std::string>(root["stageType"]) == "BOOST" &&
         static_cast<std::string>(root["featureType"]) == "HAAR" &&
         static_cast<int>(root["featureParams"]["maxCatCount"]) == 0;
}

}  // namespace

std::optional<StumpCascade> read_stump_cascade(const std::string& path) {
  const cv::FileStorage file(path, cv::FileStorage::READ);
  if (!file.isOpened()) return std::nullopt;
  const cv::FileNode root = file.getFirstTopLevelNode();
  if (!is_haar_cascade(root)) return std::nullopt;
  StumpCascade cascade;
  cascade.window = cv::Size(static_cast<int>(root["width"]), static_cast<int>(root["height"]));
  if (!window_is_searchable(cascade.window)) return std::nullopt;
  if (!read_features(root["features"], cascade)) return std::nullopt;
  if (!read_stages(root["stages"], cascade)) return std::nullopt;
  return cascade;
}

}  // namespace halcyra::haar
