#include "dashboard/preview_mapping.hpp"

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

namespace halcyra {
namespace {

const cv::Size kFrame(1920, 1080);
const cv::Rect kWholeFrame(0, 0, 1920, 1080);
const cv::Rect kArea(40, 162, 1317, 592);

FaceInfo face_at(const cv::Rect& box) {
  FaceInfo face;
  face.box = box;
  return face;
}

cv::Rect follow_crop(const cv::Rect& box) {
  return preview_mapping(kFrame, kArea, "follow", {face_at(box)}).crop;
}

TEST(PreviewMapping, ShowsTheWholeFrameInOtherViews) {
  const std::vector<FaceInfo> faces = {face_at({900, 400, 100, 120})};
  for (const char* view : {"rgb", "skeletal", "combo", "room_overview"}) {
    const PreviewMapping mapping = preview_mapping(kFrame, kArea, view, faces);
    EXPECT_EQ(mapping.crop, kWholeFrame) << view;
    EXPECT_EQ(mapping.area, kArea) << view;
  }
}

TEST(PreviewMapping, FollowsExactlyOneFace) {
  const FaceInfo face = face_at({900, 400, 100, 120});
  EXPECT_EQ(preview_mapping(kFrame, kArea, "follow", {}).crop, kWholeFrame);
  EXPECT_EQ(preview_mapping(kFrame, kArea, "follow", {face, face}).crop, kWholeFrame);
  EXPECT_EQ(preview_mapping(kFrame, kArea, "follow", {face}).area, kArea);
  EXPECT_NE(preview_mapping(kFrame, kArea, "follow", {face}).crop, kWholeFrame);
}

TEST(PreviewMapping, CentresTheFollowCropOnTheFace) {
  // 0.62 of the frame is 1190.4 x 669.6; half of the crop is taken as 595 and 334.
  EXPECT_EQ(follow_crop({900, 400, 100, 120}), cv::Rect(355, 126, 1190, 669));
  EXPECT_EQ(follow_crop({900, 400, 101, 121}), cv::Rect(355, 126, 1190, 669));
  EXPECT_EQ(follow_crop({900, 400, 102, 122}), cv::Rect(356, 127, 1190, 669));
}

TEST(PreviewMapping, KeepsTheFollowCropInsideTheFrame) {
  EXPECT_EQ(follow_crop({0, 0, 100, 120}), cv::Rect(0, 0, 1190, 669));
  EXPECT_EQ(follow_crop({1800, 950, 100, 120}), cv::Rect(730, 411, 1190, 669));
}

TEST(PreviewMapping, WidensTheFollowCropForALargeFace) {
  EXPECT_EQ(follow_crop({800, 400, 396, 222}), cv::Rect(403, 177, 1190, 669));
  EXPECT_EQ(follow_crop({800, 400, 397, 224}), cv::Rect(403, 176, 1191, 672));
  EXPECT_EQ(follow_crop({700, 300, 500, 400}), cv::Rect(200, 0, 1500, 1080));
  EXPECT_EQ(follow_crop({600, 100, 900, 900}), kWholeFrame);
}

TEST(PreviewMapping, FollowsInASmallFrame) {
  const PreviewMapping mapping =
      preview_mapping({101, 51}, kArea, "follow", {face_at({40, 20, 10, 10})});
  EXPECT_EQ(mapping.crop, cv::Rect(14, 10, 62, 31));  // 62.62 x 31.62
}

// A crop without pixels could not be scaled.
TEST(PreviewMapping, NeverCropsToNothing) {
  const std::vector<FaceInfo> faces = {face_at({0, 0, 0, -3})};
  EXPECT_EQ(preview_mapping({1, 1}, kArea, "follow", faces).crop, cv::Rect(0, 0, 1, 1));
  EXPECT_EQ(preview_mapping({3, 1}, kArea, "follow", faces).crop, cv::Rect(0, 0, 1, 1));
}

TEST(OnCanvas, ScalesAndTruncatesEachValue) {
  // The ratios are 0.6859375 and 0.548148...
  const PreviewMapping mapping{kWholeFrame, kArea};
  EXPECT_EQ(on_canvas(mapping, {100, 100, 200, 200}), cv::Rect(108, 216, 137, 109));
  EXPECT_EQ(on_canvas(mapping, kWholeFrame), kArea);
  EXPECT_EQ(on_canvas(mapping, {1, 1, 2, 2}), cv::Rect(40, 162, 1, 1));
}

TEST(OnCanvas, MagnifiesACrop) {
  const PreviewMapping mapping{{355, 126, 200, 100}, {10, 20, 500, 250}};
  EXPECT_EQ(on_canvas(mapping, {365, 136, 31, 21}), cv::Rect(35, 45, 77, 52));
}

TEST(OnCanvas, ClipsTheBoxToTheCrop) {
  const PreviewMapping mapping{{355, 126, 200, 100}, {10, 20, 400, 200}};
  EXPECT_EQ(on_canvas(mapping, {345, 116, 20, 20}), cv::Rect(10, 20, 20, 20));
  EXPECT_EQ(on_canvas(mapping, {545, 216, 20, 20}), cv::Rect(390, 200, 20, 20));
  EXPECT_EQ(on_canvas(mapping, {0, 0, 900, 900}), cv::Rect(10, 20, 400, 200));
}

TEST(OnCanvas, IsEmptyForABoxThatIsNotShown) {
  const PreviewMapping mapping{{355, 126, 200, 100}, {10, 20, 400, 200}};
  EXPECT_TRUE(on_canvas(mapping, {335, 126, 20, 20}).empty());
  EXPECT_TRUE(on_canvas(mapping, {355, 226, 20, 20}).empty());
  EXPECT_TRUE(on_canvas(mapping, {360, 130, 0, 20}).empty());
  EXPECT_FALSE(on_canvas(mapping, {336, 107, 20, 20}).empty());
}

TEST(OnCanvas, IsEmptyForABoxThatShrinksToNothing) {
  const PreviewMapping mapping{kWholeFrame, kArea};
  EXPECT_TRUE(on_canvas(mapping, {100, 100, 1, 200}).empty());
  EXPECT_TRUE(on_canvas(mapping, {100, 100, 200, 1}).empty());
}

}  // namespace
}  // namespace halcyra
