#include "face_pipeline/haar/stage_order.hpp"

#include <algorithm>
#include <optional>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "face_pipeline/haar/cascade_file.hpp"
#include "face_pipeline/haar/cascade_plan.hpp"
#include "face_pipeline/haar/image_pyramid.hpp"
#include "face_pipeline/haar/scan_plan.hpp"
#include "tests/face_pipeline/haar/classifier_comparison.hpp"
#include "tests/face_pipeline/haar/sample_pictures.hpp"

namespace halcyra::haar {
namespace {

// The picture's own layer, where windows have a distance of 2, and one with a distance of 1.
class SearchedPicture {
 public:
  SearchedPicture(const StumpCascade& cascade, const cv::Mat& picture)
      : fine_(place_plan(plan_cascade(cascade), plane_layout(picture.cols, picture.cols), {2, 0},
                         {8, 1.0})),
        coarse_(place_plan(plan_cascade(cascade), plane_layout(picture.cols, picture.cols / 2),
                           {1, 0}, {8, 1.0})) {
    pyramid_.set_picture(picture);
    const std::vector<const PyramidLayer*> layers = pyramid_.layers({1.0F, 2.0F});
    rows_.push_back(rows_of(*layers[0], fine_, cascade.window));
    rows_.push_back(rows_of(*layers[1], coarse_, cascade.window));
  }

  std::vector<int> order() const { return quickest_stage_order(rows_); }

 private:
  SampledRows rows_of(const PyramidLayer& layer, const ScanPlan& plan,
                      const cv::Size& window) const {
    const int rows = (layer.size.height + 1 - window.height) / layer.step;
    const int columns = (layer.size.width + 1 - window.width) / layer.step;
    return {
        plan.view(),
        {layer.sums.data(), layer.square_sums.data(), layer.low_sums.data(), layer.layout.pitch},
        {0, layer.step, rows, columns, false}};
  }

  ScanPlan fine_;
  ScanPlan coarse_;
  ImagePyramid pyramid_;
  std::vector<SampledRows> rows_;
};

// Copies of a stump whose values in noise are as often negative as not.
CascadeStage stage_of(int stumps, float threshold) {
  Stump stump;
  stump.below = 1.0F;
  return {threshold * static_cast<float>(stumps),
          std::vector<Stump>(static_cast<std::size_t>(stumps), stump)};
}

StumpCascade cascade_of(const std::vector<CascadeStage>& stages) {
  StumpCascade cascade;
  cascade.window = {12, 12};
  cascade.features.push_back(
      {WeightedRect{{0, 0, 12, 12}, -1}, WeightedRect{{0, 0, 6, 12}, 2}, {}});
  cascade.stages = stages;
  return cascade;
}

constexpr float kPassAll = 0.0F;
constexpr float kPassHalf = 0.5F;
constexpr float kPassNone = 2.0F;

cv::Mat some_noise() {
  cv::RNG random(1);
  return noise({100, 100}, 0, 255, random);
}

TEST(StageOrder, PutsFirstWhatRejectsTheMostForItsStumps) {
  const StumpCascade cascade =
      cascade_of({stage_of(1, kPassAll), stage_of(9, kPassAll), stage_of(4, kPassNone),
                  stage_of(1, kPassHalf), stage_of(1, kPassAll)});
  EXPECT_EQ(SearchedPicture(cascade, some_noise()).order(), (std::vector<int>{0, 3, 2, 1, 4}));
}

// Rejected windows decide which windows are skipped.
TEST(StageOrder, LeavesTheFirstStageFirst) {
  const StumpCascade cascade =
      cascade_of({stage_of(9, kPassAll), stage_of(1, kPassHalf), stage_of(1, kPassNone)});
  EXPECT_EQ(SearchedPicture(cascade, some_noise()).order(), (std::vector<int>{0, 2, 1}));
}

TEST(StageOrder, KeepsStagesInOrderThatNoSampleReaches) {
  const StumpCascade cascade =
      cascade_of({stage_of(1, kPassAll), stage_of(2, kPassNone), stage_of(1, kPassAll),
                  stage_of(3, kPassHalf), stage_of(2, kPassHalf)});
  EXPECT_EQ(SearchedPicture(cascade, some_noise()).order(), (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST(StageOrder, IsUnknownWhereTooFewWindowsPassTheFirstStage) {
  const StumpCascade passing = cascade_of({stage_of(1, kPassAll), stage_of(1, kPassHalf)});
  EXPECT_TRUE(SearchedPicture(passing, cv::Mat(100, 100, CV_8U, cv::Scalar(128))).order().empty());
  const StumpCascade failing = cascade_of({stage_of(1, kPassNone), stage_of(1, kPassHalf)});
  EXPECT_TRUE(SearchedPicture(failing, some_noise()).order().empty());
  EXPECT_TRUE(quickest_stage_order({}).empty());
}

// In a bright picture of this size, the sums of squares pass 2^31.
TEST(StageOrder, IsFoundWhereSumsOfSquaresWrapAround) {
  cv::RNG random(2);
  const StumpCascade cascade =
      cascade_of({stage_of(1, kPassAll), stage_of(9, kPassAll), stage_of(1, kPassHalf)});
  EXPECT_EQ(SearchedPicture(cascade, noise({400, 200}, 150, 255, random)).order(),
            (std::vector<int>{0, 2, 1}));
}

TEST(StageOrder, HasEachStageOfAStockCascadeOnce) {
  const cv::FileStorage file(stock_cascade("profileface"), cv::FileStorage::READ);
  const std::optional<StumpCascade> cascade = read_stump_cascade(file);
  ASSERT_TRUE(cascade);
  const SearchedPicture picture(*cascade, portrait());
  std::vector<int> order = picture.order();
  EXPECT_EQ(order, picture.order());
  EXPECT_FALSE(std::is_sorted(order.begin(), order.end()));
  std::sort(order.begin(), order.end());
  ASSERT_EQ(order.size(), cascade->stages.size());
  for (std::size_t i = 0; i < order.size(); ++i) EXPECT_EQ(order[i], static_cast<int>(i));
}

}  // namespace
}  // namespace halcyra::haar
