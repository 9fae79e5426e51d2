#include "dashboard/preview_faces.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "tests/dashboard/expected_drawing.hpp"
#include "tests/dashboard/test_scene.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

const cv::Scalar kColor(195, 110, 230);
const cv::Scalar kOtherColor(55, 200, 220);

// One pixel of the canvas for each pixel of the frame.
const PreviewMapping kMapping{{0, 0, 600, 300}, {50, 40, 600, 300}};

// A face of kMapping's frame and where it is on the canvas.
const cv::Rect kFace(200, 120, 80, 60);
const cv::Rect kOnCanvas(250, 160, 80, 60);

TestScene scene_of(const std::string& view, std::vector<FaceInfo> faces) {
  TestScene scene;
  scene.options.view = view;
  scene.faces = std::move(faces);
  return scene;
}

TestScene one_face(const std::string& view) {
  return scene_of(view, {test_face(1, kFace, kColor)});
}

cv::Mat canvas() { return expected::canvas(700, 400); }

cv::Mat drawn(const TestScene& scene) {
  const FontScaleSetting setting(1.1);
  cv::Mat actual = canvas();
  drawPreviewFaces(actual, scene.shown(), kMapping);
  return actual;
}

void box(cv::Mat& canvas, const cv::Rect& rect, const cv::Scalar& color, int thickness) {
  cv::rectangle(canvas, rect, color, thickness, cv::LINE_8);
}

// A label with its text at `origin`, on a background of this width.
void label(cv::Mat& canvas, const std::string& text, cv::Point origin, int width, double scale,
           const cv::Scalar& color = kColor) {
  const FontScaleSetting setting(1.1);
  expected::fill(canvas, {origin.x - 4, origin.y - 19, width, 25}, {9, 13, 20}, cv::LINE_8);
  expected::text(canvas, text, origin, scale, color);
}

void normal_label(cv::Mat& canvas) { label(canvas, "Person 1", {256, 151}, 110, 0.42); }

class EveryView : public ::testing::TestWithParam<const char*> {};

TEST_P(EveryView, ShowsBoxAndDetailsInDebugMode) {
  TestScene scene = one_face(GetParam());
  scene.options.debug = true;
  scene.options.face_boxes = false;
  scene.status.skeleton_available = true;

  cv::Mat expected = canvas();
  box(expected, kOnCanvas, kColor, 3);
  label(expected, "Person 1  frontal  accepted", {256, 151}, 243, 0.36);
  EXPECT_TRUE(same_pixels(drawn(scene), expected));
}

INSTANTIATE_TEST_SUITE_P(PreviewFaces, EveryView,
                         ::testing::Values("rgb", "skeletal", "combo", "room_overview", "follow"));

class BoxedView : public ::testing::TestWithParam<const char*> {};

TEST_P(BoxedView, ShowsBoxAndName) {
  cv::Mat expected = canvas();
  box(expected, kOnCanvas, kColor, 2);
  normal_label(expected);
  EXPECT_TRUE(same_pixels(drawn(one_face(GetParam())), expected));
}

INSTANTIATE_TEST_SUITE_P(PreviewFaces, BoxedView,
                         ::testing::Values("rgb", "skeletal", "combo", "room_overview", "follow"));

class NamedView : public ::testing::TestWithParam<const char*> {};

TEST_P(NamedView, ShowsOnlyTheNameWithoutBoxes) {
  TestScene scene = one_face(GetParam());
  cv::Mat expected = canvas();
  normal_label(expected);
  scene.options.face_boxes = false;
  EXPECT_TRUE(same_pixels(drawn(scene), expected));
  scene.options.face_boxes = true;
  scene.status.skeleton_available = true;
  EXPECT_TRUE(same_pixels(drawn(scene), expected));
}

INSTANTIATE_TEST_SUITE_P(PreviewFaces, NamedView,
                         ::testing::Values("combo", "room_overview", "follow"));

class BareView : public ::testing::TestWithParam<const char*> {};

TEST_P(BareView, ShowsNothingWithoutBoxes) {
  TestScene scene = one_face(GetParam());
  scene.options.face_boxes = false;
  EXPECT_TRUE(same_pixels(drawn(scene), canvas()));
  scene.options.face_boxes = true;
  scene.status.skeleton_available = true;
  EXPECT_TRUE(same_pixels(drawn(scene), canvas()));
}

TEST_P(BareView, StillMarksTheSpeakerWithoutBoxes) {
  TestScene scene = one_face(GetParam());
  scene.options.face_boxes = false;
  scene.status.room.voice_match = "voice direction matched Person 1";
  cv::Mat expected = canvas();
  box(expected, {246, 156, 88, 68}, kColor, 1);
  EXPECT_TRUE(same_pixels(drawn(scene), expected));
}

INSTANTIATE_TEST_SUITE_P(PreviewFaces, BareView, ::testing::Values("rgb", "skeletal"));

TEST(PreviewFaces, MarksTheSpeakerInItsColour) {
  TestScene scene = one_face("combo");
  scene.faces.push_back(test_face(2, {400, 120, 50, 50}, kOtherColor));
  scene.status.room.voice_match = "voice direction matched Person 2";

  cv::Mat expected = canvas();
  box(expected, kOnCanvas, kColor, 2);
  normal_label(expected);
  box(expected, {450, 160, 50, 50}, kOtherColor, 2);
  label(expected, "Person 2", {456, 151}, 110, 0.42, kOtherColor);
  box(expected, {446, 156, 58, 58}, kOtherColor, 1);
  EXPECT_TRUE(same_pixels(drawn(scene), expected));
}

TEST(PreviewFaces, MarksTheSpeakerInDebugModeToo) {
  TestScene scene = one_face("follow");
  scene.options.debug = true;
  scene.status.room.voice_match = "Person 1";

  cv::Mat expected = canvas();
  box(expected, kOnCanvas, kColor, 3);
  label(expected, "Person 1  frontal  accepted", {256, 151}, 243, 0.36);
  box(expected, {246, 156, 88, 68}, kColor, 1);
  EXPECT_TRUE(same_pixels(drawn(scene), expected));
}

TEST(PreviewFaces, MarksNoSpeakerWithSkeletons) {
  TestScene scene = one_face("rgb");
  scene.status.skeleton_available = true;
  scene.status.room.voice_match = "voice direction matched Person 1";
  EXPECT_TRUE(same_pixels(drawn(scene), canvas()));
}

TEST(PreviewFaces, KeepsTheMarkOfTheSpeakerInsideThePicture) {
  TestScene scene = scene_of("rgb", {test_face(1, {0, 270, 40, 30}, kColor)});
  scene.options.face_boxes = false;
  scene.status.room.voice_match = "voice direction matched Person 1";
  cv::Mat expected = canvas();
  box(expected, {50, 306, 44, 34}, kColor, 1);
  EXPECT_TRUE(same_pixels(drawn(scene), expected));
}

TEST(PreviewFaces, NamesTheOwner) {
  TestScene scene = one_face("rgb");
  scene.faces[0].label = "CandidateDorran";
  cv::Mat expected = canvas();
  box(expected, kOnCanvas, kColor, 2);
  label(expected, "Dorran", {256, 151}, 110, 0.42);
  EXPECT_TRUE(same_pixels(drawn(scene), expected));
}

TEST(PreviewFaces, KeepsTheLabelInsideTheTopOfThePicture) {
  // The picture begins at 40. The lowest of these boxes begins at 73, and 9 above that is 24 below
  // the top of the picture.
  for (const int top : {0, 24, 33}) {
    TestScene scene = scene_of("rgb", {test_face(1, {200, top, 80, 60}, kColor)});
    cv::Mat expected = canvas();
    box(expected, {250, 40 + top, 80, 60}, kColor, 2);
    label(expected, "Person 1", {256, 64}, 110, 0.42);
    EXPECT_TRUE(same_pixels(drawn(scene), expected)) << top;
  }
  TestScene scene = scene_of("rgb", {test_face(1, {200, 34, 80, 60}, kColor)});
  cv::Mat expected = canvas();
  box(expected, {250, 74, 80, 60}, kColor, 2);
  label(expected, "Person 1", {256, 65}, 110, 0.42);
  EXPECT_TRUE(same_pixels(drawn(scene), expected));
}

TEST(PreviewFaces, FitsTheBackgroundToTheLengthOfTheLabel) {
  struct Case {
    std::string quality;
    int width;
  };
  // "Person 1  frontal  " has 19 characters.
  for (const Case& given :
       {Case{"too_dark", 243}, Case{"12345678901234", 297}, Case{"123456789012345", 300},
        Case{"a quality beyond all words", 300}}) {
    TestScene scene = one_face("rgb");
    scene.options.debug = true;
    scene.faces[0].quality = given.quality;
    cv::Mat expected = canvas();
    box(expected, kOnCanvas, kColor, 3);
    label(expected, "Person 1  frontal  " + given.quality, {256, 151}, given.width, 0.36);
    EXPECT_TRUE(same_pixels(drawn(scene), expected)) << given.quality;
  }
}

TEST(PreviewFaces, WidensTheLabelOfALongName) {
  TestScene scene = one_face("rgb");
  scene.faces[0].person_id = 123456;  // the whole label has 13 characters
  cv::Mat expected = canvas();
  box(expected, kOnCanvas, kColor, 2);
  label(expected, "Person 123456", {256, 151}, 117, 0.42);
  EXPECT_TRUE(same_pixels(drawn(scene), expected));
}

TEST(PreviewFaces, DrawsOneFaceAfterTheOther) {
  TestScene scene = one_face("rgb");
  scene.faces.push_back(test_face(2, {220, 130, 80, 60}, kOtherColor));
  scene.status.room.voice_match = "voice direction matched Person 1";

  cv::Mat expected = canvas();
  box(expected, kOnCanvas, kColor, 2);
  normal_label(expected);
  box(expected, {246, 156, 88, 68}, kColor, 1);
  box(expected, {270, 170, 80, 60}, kOtherColor, 2);
  label(expected, "Person 2", {276, 161}, 110, 0.42, kOtherColor);
  EXPECT_TRUE(same_pixels(drawn(scene), expected));
}

TEST(PreviewFaces, SkipsAFaceThatIsNotShown) {
  TestScene scene = scene_of(
      "combo", {test_face(1, {-80, 120, 80, 60}, kColor), test_face(2, {200, 300, 80, 60}, kColor),
                test_face(3, {200, 120, 80, 0}, kColor)});
  scene.status.room.voice_match = "Person 1 Person 2 Person 3";
  EXPECT_TRUE(same_pixels(drawn(scene), canvas()));
  scene.options.debug = true;
  EXPECT_TRUE(same_pixels(drawn(scene), canvas()));
}

TEST(PreviewFaces, ClipsAFaceThatIsPartlyShown) {
  cv::Mat expected = canvas();
  box(expected, {590, 160, 60, 60}, kColor, 2);
  label(expected, "Person 1", {596, 151}, 110, 0.42);
  EXPECT_TRUE(
      same_pixels(drawn(scene_of("rgb", {test_face(1, {540, 120, 200, 60}, kColor)})), expected));
}

}  // namespace
}  // namespace halcyra
