#include "dashboard/mic_hud.hpp"

#include <optional>

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "app/run_state/runtime_status.hpp"
#include "tests/dashboard/expected_drawing.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

const cv::Scalar kUntrusted(105, 112, 124);
const cv::Scalar kAmbiguous(80, 190, 230);
const cv::Scalar kSomebody(80, 160, 245);
const cv::Scalar kFaceColor(195, 110, 230);

const cv::Rect kArea(12, 34, 640, 400);

struct Strip {
  int segment_width;
  int gap;
  int segment_height;
  int from_bottom;  // of the area to the top of the segments
  int from_left;    // of the area to the first segment
};

const Strip kStrip{14, 7, 6, 18, 260};  // in kArea

RuntimeStatus heard(const std::string& angle, const std::string& confidence,
                    const std::string& match = "voice direction matched Person 1") {
  RuntimeStatus status;
  status.voice.direction_angle = angle;
  status.voice.direction_confidence = confidence;
  status.room.voice_match = match;
  return status;
}

FaceInfo face(int person_id, const cv::Scalar& color, const std::string& label = "Unknown") {
  FaceInfo face;
  face.person_id = person_id;
  face.color = color;
  face.label = label;
  return face;
}

// The strip with one segment lit, or none.
void draw_strip(cv::Mat& canvas, const cv::Rect& area, const Strip& strip, std::optional<int> lit,
                const cv::Scalar& highlight) {
  for (int i = 0; i < 6; ++i) {
    const cv::Rect segment(area.x + strip.from_left + i * (strip.segment_width + strip.gap),
                           area.y + area.height - strip.from_bottom, strip.segment_width,
                           strip.segment_height);
    if (i == lit) {
      expected::smooth_box(canvas, segment, highlight, {230, 240, 250});
    } else {
      expected::smooth_box(canvas, segment, {42, 49, 59}, {82, 94, 110});
    }
  }
}

::testing::AssertionResult shows(const RuntimeStatus& status, const std::vector<FaceInfo>& faces,
                                 std::optional<int> lit, const cv::Scalar& highlight) {
  cv::Mat actual = expected::canvas(700, 450);
  drawMicHud(actual, kArea, status, true, faces);
  cv::Mat expected = expected::canvas(700, 450);
  draw_strip(expected, kArea, kStrip, lit, highlight);
  return same_pixels(actual, expected);
}

struct StripCase {
  cv::Size area;
  Strip strip;
};

class MicHudGeometry : public ::testing::TestWithParam<StripCase> {};

TEST_P(MicHudGeometry, FollowsTheArea) {
  const cv::Rect area(cv::Point(12, 34), GetParam().area);
  const cv::Size canvas = area.size() + cv::Size(24, 50);
  cv::Mat actual = expected::canvas(canvas.width, canvas.height);
  drawMicHud(actual, area, heard("10", "0.9", "unmatched voice center-right"), true, {});

  cv::Mat expected = expected::canvas(canvas.width, canvas.height);
  draw_strip(expected, area, GetParam().strip, 3, kSomebody);
  EXPECT_TRUE(same_pixels(actual, expected));
}

INSTANTIATE_TEST_SUITE_P(
    Areas, MicHudGeometry,
    ::testing::Values(
        StripCase{{640, 400}, kStrip}, StripCase{{1288, 600}, {28, 12, 9, 19, 530}},
        StripCase{{1288, 522}, {28, 12, 9, 19, 530}}, StripCase{{1288, 521}, {28, 12, 8, 18, 530}},
        StripCase{{2000, 1000}, {28, 12, 9, 19, 886}}, StripCase{{1289, 300}, {28, 12, 5, 18, 530}},
        StripCase{{1287, 522}, {27, 12, 9, 19, 532}}, StripCase{{1104, 406}, {24, 12, 7, 18, 450}},
        StripCase{{1103, 522}, {23, 11, 9, 19, 455}}, StripCase{{1103, 521}, {23, 11, 8, 18, 455}},
        StripCase{{690, 405}, {15, 7, 6, 18, 282}}, StripCase{{689, 347}, {14, 7, 5, 18, 285}},
        StripCase{{689, 348}, {14, 7, 6, 18, 285}}, StripCase{{450, 289}, {14, 7, 5, 18, 165}},
        StripCase{{120, 70}, {14, 7, 5, 18, 0}}));

::testing::AssertionResult draws_nothing(const cv::Rect& area, bool enabled) {
  cv::Mat actual = expected::canvas(700, 450);
  drawMicHud(actual, area, heard("10", "0.9"), enabled, {});
  return same_pixels(actual, expected::canvas(700, 450));
}

TEST(MicHud, IsDrawnOnlyWhenEnabledAndLargeEnough) {
  EXPECT_FALSE(draws_nothing({12, 34, 120, 70}, true));
  EXPECT_TRUE(draws_nothing({12, 34, 119, 70}, true));
  EXPECT_TRUE(draws_nothing({12, 34, 120, 69}, true));
  EXPECT_TRUE(draws_nothing(kArea, false));
}

TEST(MicHud, LightsTheZoneOfTheAngle) {
  const std::vector<std::pair<std::string, int>> zones = {
      {"-90", 0}, {"-45.1", 0}, {"-45", 1}, {"-20.1", 1}, {"-20", 2}, {"-0.1", 2},
      {"0", 3},   {"19.9", 3},  {"20", 4},  {"44.9", 4},  {"45", 5},  {"90", 5}};
  for (const auto& [angle, zone] : zones) {
    EXPECT_TRUE(shows(heard(angle, "0.9", "unmatched voice"), {}, zone, kSomebody)) << angle;
  }
}

TEST(MicHud, StaysNeutralWithoutAnAngle) {
  for (const char* angle : {"unknown", "", "nan", "inf", "-inf", "1e999"}) {
    EXPECT_TRUE(shows(heard(angle, "0.9"), {face(1, kFaceColor)}, {}, {})) << angle;
  }
}

TEST(MicHud, IsGreyWhileTheDirectionIsNotTrusted) {
  const std::vector<FaceInfo> faces = {face(1, kFaceColor)};
  for (const char* confidence : {"0.44", "0.4499", "0", "-1", "unknown", "", "nan", "inf"}) {
    EXPECT_TRUE(shows(heard("10", confidence), faces, 3, kUntrusted)) << confidence;
    EXPECT_TRUE(shows(heard("10", confidence, "ambiguous speaker"), faces, 3, kUntrusted));
  }
  RuntimeStatus flagged = heard("10", "0.9");
  flagged.voice.direction_low_confidence = true;
  EXPECT_TRUE(shows(flagged, faces, 3, kUntrusted));
}

TEST(MicHud, TrustsAConfidenceAtTheLimit) {
  EXPECT_TRUE(shows(heard("10", "0.45"), {face(1, kFaceColor)}, 3, kFaceColor));
}

TEST(MicHud, HasAColourForAnAmbiguousSpeaker) {
  const RuntimeStatus status = heard("10", "0.9", "ambiguous speaker Person 1");
  EXPECT_TRUE(shows(status, {face(1, kFaceColor)}, 3, kAmbiguous));
}

TEST(MicHud, TakesTheColourOfTheFirstNamedFace) {
  const cv::Scalar first(55, 200, 220);
  const cv::Scalar second(230, 170, 75);
  EXPECT_TRUE(shows(
      heard("10", "0.9", "voice direction matched Dorran"),
      {face(1, kFaceColor), face(2, first, "CandidateDorran"), face(3, second, "ConfirmedDorran")},
      3, first));
  EXPECT_TRUE(shows(heard("10", "0.9", "voice direction matched Person 12"),
                    {face(1, first), face(12, second)}, 3, first));
  EXPECT_TRUE(shows(heard("10", "0.9", "Unknown voice"), {face(0, second)}, 3, second));
}

TEST(MicHud, HasAColourForAVoiceThatMatchesNobody) {
  EXPECT_TRUE(shows(heard("10", "0.9"), {}, 3, kSomebody));
  EXPECT_TRUE(shows(heard("10", "0.9"), {face(2, kFaceColor)}, 3, kSomebody));
}

}  // namespace
}  // namespace halcyra
