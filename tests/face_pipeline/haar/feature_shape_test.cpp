#include "face_pipeline/haar/feature_shape.hpp"

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "face_pipeline/haar/cascade_file.hpp"
#include "tests/face_pipeline/haar/classifier_comparison.hpp"

namespace halcyra::haar {
namespace {

// Any number for each corner, as an integral image would have one.
class CornerValues {
 public:
  int operator()(const Corner& corner) {
    const auto known = values_.find(corner);
    if (known != values_.end()) return known->second;
    return values_[corner] = random_.uniform(-1000, 1000);
  }

 private:
  std::map<Corner, int> values_;
  cv::RNG random_{5};
};

int value_of_rects(const RectFeature& feature, CornerValues& values) {
  int sum = 0;
  for (const WeightedRect& rect : feature) {
    const auto [upper_left, upper_right, lower_left, lower_right] = corners_of(rect.area);
    sum += rect.weight *
           (values(upper_left) - values(upper_right) - values(lower_left) + values(lower_right));
  }
  return sum;
}

// What each entry of a shape counts for, in the shape's order.
constexpr std::array<std::array<int, 9>, kAnyShape> kWeights = {{
    {1, -1, -2, 2, 1, -1, 0, 0, 0},    // kHalves
    {1, -1, -3, 3, 3, -3, -1, 1, 0},   // kThirds
    {1, -2, 1, -2, 4, -2, 1, -2, 1},   // kChecks
    {-1, 2, -1, 2, -4, 2, -1, 2, -1},  // kInverseChecks
}};

int value_of_shape(const ShapedFeature& shaped, CornerValues& values) {
  int sum = 0;
  for (std::size_t i = 0; i < shaped.corners.size(); ++i) {
    const int weight = kWeights[shaped.shape][i];
    if (weight != 0) sum += weight * values(shaped.corners[i]);
  }
  return sum;
}

// The numbers of features by their shape.
std::array<int, kShapeCount> count_shapes(const std::string& cascade_name) {
  const cv::FileStorage file(stock_cascade(cascade_name), cv::FileStorage::READ);
  const std::optional<StumpCascade> cascade = read_stump_cascade(file);
  std::array<int, kShapeCount> counts{};
  for (const RectFeature& feature : cascade.value().features) {
    const ShapedFeature shaped = shape_of(feature);
    ++counts[shaped.shape];
    if (shaped.shape == kAnyShape) continue;
    CornerValues values;
    EXPECT_EQ(value_of_shape(shaped, values), value_of_rects(feature, values));
    EXPECT_EQ(value_of_shape(negated(shaped), values), -value_of_rects(feature, values));
  }
  return counts;
}

// What has no shape takes several times as long to search with.
TEST(FeatureShape, IsKnownForTheFeaturesOfStockCascades) {
  const auto frontal = count_shapes("frontalface_default");
  const auto profile = count_shapes("profileface");
  for (const FeatureShape shape : {kHalves, kThirds, kChecks}) {
    EXPECT_GT(frontal[shape], 100);
    EXPECT_GT(profile[shape], 100);
  }
  EXPECT_GT(frontal[kInverseChecks], 100);
  EXPECT_LT(frontal[kAnyShape], 10);
  EXPECT_EQ(profile[kAnyShape], 0);
}

TEST(FeatureShape, IsNotKnownWhereWeightsOrPlacesDiffer) {
  const cv::Rect whole(2, 2, 8, 4);
  EXPECT_EQ(shape_of({{{whole, -1}, {{2, 2, 4, 4}, 2}, {}}}).shape, kHalves);
  EXPECT_EQ(shape_of({{{whole, -1}, {{2, 2, 4, 4}, 3}, {}}}).shape, kAnyShape);
  EXPECT_EQ(shape_of({{{whole, -2}, {{2, 2, 4, 4}, 4}, {}}}).shape, kAnyShape);
  EXPECT_EQ(shape_of({{{whole, -1}, {{2, 3, 4, 4}, 2}, {}}}).shape, kAnyShape);
  EXPECT_EQ(shape_of({{{whole, -1}, {{12, 2, 4, 4}, 1}, {}}}).shape, kAnyShape);
}

// 257 white pixels add up to 65535, which is all that 16 bits hold.
TEST(FeatureShape, IsNotKnownWhereAPartIsTooLarge) {
  EXPECT_EQ(shape_of({{{{0, 0, 514, 1}, -1}, {{0, 0, 257, 1}, 2}, {}}}).shape, kHalves);
  EXPECT_EQ(shape_of({{{{0, 0, 516, 1}, -1}, {{0, 0, 258, 1}, 2}, {}}}).shape, kAnyShape);
}

}  // namespace
}  // namespace halcyra::haar
