#include "dashboard/preview.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "dashboard/mic_hud.hpp"
#include "dashboard/preview_faces.hpp"
#include "dashboard/preview_insets.hpp"
#include "dashboard/view_status.hpp"
#include "tests/dashboard/dashboard_of.hpp"
#include "tests/dashboard/expected_drawing.hpp"
#include "tests/dashboard/test_scene.hpp"
#include "tests/support/font_scale_setting.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

const cv::Scalar kGreen(80, 210, 120);
const cv::Scalar kOrange(70, 180, 245);
const cv::Scalar kRed(90, 95, 245);
const cv::Scalar kMissing(96, 110, 130);

// The preview of a canvas of 1440 x 810.
const cv::Rect kPreview(21, 89, 935, 475);
const cv::Rect kArea(33, 138, 911, 414);
const cv::Rect kFrame(0, 0, 960, 540);

class Preview : public ::testing::Test {
 protected:
  Preview() {
    scene_.color = expected::picture(kFrame.width, kFrame.height);
    scene_.infrared = expected::picture(256, 212);
    scene_.depth = expected::picture(212, 256);
    scene_.status.rgb_ok = true;
    scene_.status.kinect_message = "Kinect RGB/IR/Depth streams running";
    scene_.status.ir_message = "waiting for IR frames";
    scene_.status.depth_message = "waiting for depth frames";
    scene_.status.voice.direction_angle = "-10";
    scene_.status.voice.direction_confidence = "0.8";
    scene_.faces = {test_face(1, {450, 200, 50, 60}, {195, 110, 230})};
  }

  cv::Mat drawn(const std::string& view) {
    scene_.options.view = view;
    cv::Mat canvas = expected::canvas(1440, 810);
    drawPreview(canvas, dashboard_of(1440, 810), scene_.shown());
    return canvas;
  }

  // Frame and status strip for the current scene.
  cv::Mat expected_frame(const std::string& label) const {
    cv::Mat canvas = expected::canvas(1440, 810);
    expected::smooth_box(canvas, kPreview, {22, 28, 38}, {52, 64, 80});
    expected::text(canvas, "CURRENT VIEW: " + label, {33, 118}, 0.43, {222, 230, 240});
    const bool streaming = scene_.status.rgb_ok;
    expected::text(canvas, streaming ? "RGB STREAM OK" : "RGB STREAM UNAVAILABLE", {754, 118}, 0.34,
                   streaming ? kGreen : kRed);
    const bool tracking = scene_.status.skeleton_available;
    expected::text(canvas,
                   tracking ? "SKELETON TRACKING" : "SKELETON UNAVAILABLE - FACE FALLBACK ACTIVE",
                   {33, 137}, 0.31, tracking ? kGreen : kOrange);
    return canvas;
  }

  // The face marks, for the whole colour frame or a part of it. They have their own tests.
  void expected_faces(cv::Mat& canvas, const cv::Rect& crop = kFrame) const {
    drawPreviewFaces(canvas, scene_.shown(), {crop, kArea});
  }

  void expected_hud(cv::Mat& canvas) const {
    drawMicHud(canvas, kArea, scene_.status, true, scene_.faces);
  }

  const FontScaleSetting setting_{1.1};
  TestScene scene_;
};

TEST_F(Preview, ScalesTheColourFrameIntoItsArea) {
  const std::vector<std::pair<std::string, std::string>> views = {
      {"rgb", "RGB"}, {"room_overview", "ROOM OVERVIEW"}};
  for (const auto& [view, label] : views) {
    const cv::Mat actual = drawn(view);
    cv::Mat expected = expected_frame(label);
    expected::scaled_picture(expected, kArea, scene_.color);
    expected_faces(expected);
    expected_hud(expected);
    EXPECT_TRUE(same_pixels(actual, expected)) << view;
  }
}

TEST_F(Preview, ShowsTheStateOfStreamAndTracking) {
  scene_.status.rgb_ok = false;
  scene_.status.skeleton_available = true;
  const cv::Mat actual = drawn("rgb");
  cv::Mat expected = expected_frame("RGB");
  expected::scaled_picture(expected, kArea, scene_.color);
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST_F(Preview, KeepsTheStreamWordApartFromTheViewName) {
  // On the narrowest canvas it is 260 pixels right of the view name; it is never less than 170.
  DashboardGeometry geometry = dashboard_of(800, 480);
  scene_.options.view = "rgb";
  for (const auto& [width, left] :
       {std::pair(474, 284), std::pair(384, 194), std::pair(300, 194)}) {
    geometry.preview.width = width;
    cv::Mat canvas = expected::canvas(800, 480);
    drawPreview(canvas, geometry, scene_.shown());
    cv::Mat expected(canvas.size(), canvas.type(), cv::Scalar(22, 28, 38));
    expected::text(expected, "RGB STREAM OK", {left, 89}, 0.34, kGreen);
    const cv::Rect word(left, 78, 100, 13);
    EXPECT_TRUE(same_pixels(canvas(word), expected(word))) << width;
  }
}

TEST_F(Preview, FollowsTheOnlyFace) {
  const cv::Mat actual = drawn("follow");
  const cv::Rect crop(178, 63, 595, 334);
  cv::Mat expected = expected_frame("FOLLOW");
  expected::scaled_picture(expected, kArea, scene_.color(crop));
  expected_faces(expected, crop);
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST_F(Preview, ShowsTheWholeFrameWhenThereAreTwoFaces) {
  scene_.faces.push_back(test_face(2, {50, 200, 50, 60}, {55, 200, 220}));
  const cv::Mat actual = drawn("follow");
  cv::Mat expected = expected_frame("FOLLOW");
  expected::scaled_picture(expected, kArea, scene_.color);
  expected_faces(expected);
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST_F(Preview, FollowsByTheChosenViewNotByTheRoomsMode) {
  scene_.status.room.view_mode = "follow";
  const cv::Mat actual = drawn("rgb");
  cv::Mat expected = expected_frame("RGB");
  expected::scaled_picture(expected, kArea, scene_.color);
  expected_faces(expected);
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST_F(Preview, DrawsTheInsetsUnderTheFaceMarksInTheComboView) {
  scene_.faces[0].box = {850, 30, 60, 60};  // under the infrared inset
  const cv::Mat actual = drawn("combo");
  cv::Mat expected = expected_frame("COMBO");
  expected::scaled_picture(expected, kArea, scene_.color);
  drawPreviewInsets(expected, kArea, scene_.infrared, scene_.depth);
  expected_faces(expected);
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST_F(Preview, SaysWhenNobodyIsDetected) {
  scene_.faces.clear();
  const cv::Mat actual = drawn("combo");
  cv::Mat expected = expected_frame("COMBO");
  expected::scaled_picture(expected, kArea, scene_.color);
  drawPreviewInsets(expected, kArea, scene_.infrared, scene_.depth);
  expected::text(expected, "No person detected - wide room scan", {53, 174}, 0.42, {215, 224, 236});
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

// The scaled frame, dimmed, with the note that there are no skeletons.
void draw_skeletal_picture(cv::Mat& canvas, const cv::Mat& color, const cv::Rect& area, int width) {
  expected::scaled_picture(canvas, area, color);
  cv::Mat_<cv::Vec3b> picture = canvas(area);
  for (cv::Vec3b& pixel : picture) {
    for (int i = 0; i < 3; ++i) {
      pixel[i] = cv::saturate_cast<uchar>(static_cast<float>(pixel[i]) * 0.72F);
    }
  }
  const cv::Rect note(area.x + 14, area.y + 14, width, 58);
  expected::fill(canvas, note, {8, 11, 16}, cv::LINE_8);
  cv::rectangle(canvas, note, kOrange, 1, cv::LINE_8);
  expected::text(canvas, "SKELETON UNAVAILABLE", {area.x + 26, area.y + 37}, 0.42, kOrange);
  expected::text(canvas, "face fallback active; no fake skeleton joints drawn",
                 {area.x + 26, area.y + 59}, 0.3, {210, 220, 232});
}

TEST_F(Preview, DimsTheSkeletalViewAndSaysWhy) {
  const cv::Mat actual = drawn("skeletal");
  cv::Mat expected = expected_frame("SKELETAL");
  draw_skeletal_picture(expected, scene_.color, kArea, 520);
  expected_faces(expected);
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST_F(Preview, FitsTheSkeletalNoteIntoANarrowPicture) {
  DashboardGeometry geometry = dashboard_of(1440, 810);
  for (const auto& [width, note] :
       {std::pair(548, 520), std::pair(547, 519), std::pair(400, 372)}) {
    geometry.image_area.width = width;
    scene_.options.view = "skeletal";
    cv::Mat actual = expected::canvas(1440, 810);
    drawPreview(actual, geometry, scene_.shown());
    cv::Mat expected = expected_frame("SKELETAL");
    draw_skeletal_picture(expected, scene_.color, geometry.image_area, note);
    drawPreviewFaces(expected, scene_.shown(), {kFrame, geometry.image_area});
    drawMicHud(expected, geometry.image_area, scene_.status, true, scene_.faces);
    EXPECT_TRUE(same_pixels(actual, expected)) << width;
  }
}

TEST_F(Preview, DoesNotDimTheSkeletalViewWhenSkeletonsAreTracked) {
  scene_.status.skeleton_available = true;
  const cv::Mat actual = drawn("skeletal");
  cv::Mat expected = expected_frame("SKELETAL");
  expected::scaled_picture(expected, kArea, scene_.color);
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST_F(Preview, ShowsInfraredAlone) {
  scene_.faces.clear();
  const cv::Mat actual = drawn("ir");
  cv::Mat expected = expected_frame("IR");
  expected::scaled_picture(expected, kArea, scene_.infrared);
  expected::text(expected, "LIVE IR", {51, 172}, 0.48, {245, 250, 255});
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST_F(Preview, ShowsDepthAlone) {
  scene_.options.debug = true;  // face marks belong to the colour picture only
  const cv::Mat actual = drawn("depth");
  cv::Mat expected = expected_frame("DEPTH");
  expected::scaled_picture(expected, kArea, scene_.depth);
  expected::text(expected, "LIVE DEPTH", {51, 172}, 0.48, {245, 250, 255});
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST_F(Preview, ExplainsAMissingInfraredPicture) {
  scene_.infrared.release();
  scene_.faces.clear();
  const cv::Mat actual = drawn("ir");
  cv::Mat expected = expected_frame("IR");
  drawViewStatus(expected, kArea, "CURRENT VIEW: IR", "waiting for IR frames", kOrange);
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST_F(Preview, ExplainsAMissingDepthPicture) {
  scene_.depth.release();
  const cv::Mat actual = drawn("depth");
  cv::Mat expected = expected_frame("DEPTH");
  drawViewStatus(expected, kArea, "CURRENT VIEW: DEPTH", "waiting for depth frames", kOrange);
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST_F(Preview, ShowsInfraredAndDepthWithoutAColourFrame) {
  scene_.color.release();
  for (const char* view : {"ir", "depth"}) {
    const cv::Mat actual = drawn(view);
    cv::Mat expected = expected::canvas(1440, 810);
    expected::scaled_picture(expected, kArea, view[0] == 'i' ? scene_.infrared : scene_.depth);
    const cv::Rect below_the_label(33, 200, 911, 300);
    EXPECT_TRUE(same_pixels(actual(below_the_label), expected(below_the_label))) << view;
  }
}

TEST_F(Preview, ExplainsAMissingColourFrame) {
  scene_.color.release();
  scene_.status.kinect_message = "no Kinect v2 device detected";
  const std::vector<std::pair<std::string, std::string>> views = {
      {"rgb", "RGB"},
      {"skeletal", "SKELETAL"},
      {"combo", "COMBO"},
      {"room_overview", "ROOM OVERVIEW"},
      {"follow", "FOLLOW"}};
  for (const auto& [view, label] : views) {
    const cv::Mat actual = drawn(view);
    cv::Mat expected = expected_frame(label);
    drawViewStatus(expected, kArea, "CURRENT VIEW: " + label, "no Kinect v2 device detected",
                   kMissing);
    expected_hud(expected);
    EXPECT_TRUE(same_pixels(actual, expected)) << view;
  }
}

TEST_F(Preview, DoesNotMentionPeopleOverAnExplanation) {
  scene_.color.release();
  const cv::Mat somebody = drawn("combo");
  scene_.faces.clear();
  EXPECT_TRUE(same_pixels(drawn("combo"), somebody));
}

TEST_F(Preview, OmitsTheMicrophoneHudWhenItIsOff) {
  scene_.options.mic_hud = false;
  const cv::Mat actual = drawn("ir");
  cv::Mat expected = expected_frame("IR");
  expected::scaled_picture(expected, kArea, scene_.infrared);
  expected::text(expected, "LIVE IR", {51, 172}, 0.48, {245, 250, 255});
  EXPECT_TRUE(same_pixels(actual, expected));
}

TEST_F(Preview, DrawsTheMicrophoneHudOverTheFaces) {
  scene_.faces[0].box = {450, 450, 100, 90};
  scene_.options.debug = true;
  const cv::Mat actual = drawn("rgb");
  cv::Mat expected = expected_frame("RGB");
  expected::scaled_picture(expected, kArea, scene_.color);
  expected_faces(expected);
  expected_hud(expected);
  EXPECT_TRUE(same_pixels(actual, expected));
}

}  // namespace
}  // namespace halcyra
