#include "face_pipeline/haar/cascade_file.hpp"

#include <cmath>
#include <cstddef>
#include <cstdlib>

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

// The next number of a list.
template <typename Number>
Number taken(cv::FileNodeIterator& list) {
  const auto number = static_cast<Number>(*list);
  ++list;
  return number;
}

std::optional<WeightedRect> read_rect(const cv::FileNode& node) {
  if (!node.isSeq() || node.size() != 5) return std::nullopt;
  WeightedRect rect;
  cv::FileNodeIterator list = node.begin();
  rect.area.x = taken<int>(list);
  rect.area.y = taken<int>(list);
  rect.area.width = taken<int>(list);
  rect.area.height = taken<int>(list);
  const auto weight = taken<float>(list);
  if (!(std::abs(weight) <= 1000.0F) || std::trunc(weight) != weight) return std::nullopt;
  rect.weight = static_cast<int>(weight);
  return rect;
}

bool lies_in(const cv::Rect& area, const cv::Size& window) {
  return area.x >= 0 && area.y >= 0 && area.width >= 0 && area.height >= 0 &&
         area.width <= window.width - area.x && area.height <= window.height - area.y;
}

std::optional<RectFeature> read_feature(const cv::FileNode& node, const cv::Size& window) {
  if (!node.isMap()) return std::nullopt;
  const cv::FileNode rects = node["rects"];
  if (static_cast<int>(node["tilted"]) != 0) return std::nullopt;
  RectFeature feature;
  if (!rects.isSeq() || rects.size() < 2 || rects.size() > feature.size()) return std::nullopt;
  double largest_sum = 0.0;
  std::size_t count = 0;
  for (const cv::FileNode& each : rects) {
    const std::optional<WeightedRect> rect = read_rect(each);
    if (!rect || !lies_in(rect->area, window)) return std::nullopt;
    feature[count++] = *rect;
    largest_sum += std::abs(rect->weight) * kBrightest * rect->area.area();
  }
  if (largest_sum >= kLargestExactSum) return std::nullopt;
  return feature;
}

std::optional<Stump> read_stump(const cv::FileNode& node, std::size_t feature_count) {
  if (!node.isMap()) return std::nullopt;
  const cv::FileNode tree = node["internalNodes"];
  const cv::FileNode leaves = node["leafValues"];
  if (!tree.isSeq() || !leaves.isSeq()) return std::nullopt;
  if (tree.size() != 4 || leaves.size() != 2) return std::nullopt;
  Stump stump;
  cv::FileNodeIterator node_values = tree.begin() += 2;
  stump.feature = taken<int>(node_values);
  stump.threshold = taken<float>(node_values);
  cv::FileNodeIterator leaf_values = leaves.begin();
  stump.below = taken<float>(leaf_values);
  stump.not_below = taken<float>(leaf_values);
  const bool usable = stump.feature >= 0 &&
                      static_cast<std::size_t>(stump.feature) < feature_count &&
                      std::isfinite(stump.threshold) && std::abs(stump.below) < 1e4F &&
                      std::abs(stump.not_below) < 1e4F;
  if (!usable) return std::nullopt;
  return stump;
}

std::optional<CascadeStage> read_stage(const cv::FileNode& node, std::size_t feature_count) {
  if (!node.isMap()) return std::nullopt;
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
  if (!root.isMap()) return false;
  const cv::FileNode parameters = root["featureParams"];
  return static_cast<std::string>(root["stageType"]) == "BOOST" &&
         static_cast<std::string>(root["featureType"]) == "HAAR" && parameters.isMap() &&
         static_cast<int>(parameters["maxCatCount"]) == 0;
}

}  // namespace

std::optional<StumpCascade> read_stump_cascade(const cv::FileStorage& file) {
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
