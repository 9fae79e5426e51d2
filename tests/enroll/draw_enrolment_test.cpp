#include "enroll/draw_enrolment.hpp"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "dashboard/palette.hpp"
#include "enroll/enrolment_layout.hpp"
#include "enroll/fitted_text.hpp"
#include "tests/enroll/enrolment_moments.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

const cv::Size kSizes[] = {{800, 480}, {1440, 810}, {2560, 1440}, {3840, 2160}, {800, 1400}};

int pixels_of(const cv::Mat& part, const cv::Scalar& color) {
  cv::Mat same;
  cv::inRange(part, color, color, same);
  return cv::countNonZero(same);
}

// Small red letters are smoothed, so that hardly a pixel has their own colour.
int reddish_pixels_of(const cv::Mat& part) {
  cv::Mat channels[3];
  cv::split(part, channels);
  return cv::countNonZero(channels[2] > channels[1] + 60);
}

class DrawEnrolment : public ::testing::TestWithParam<cv::Size> {
 protected:
  cv::Mat drawn() const {
    cv::Mat canvas;
    draw_enrolment(canvas, GetParam(),
                   {color_, observation_, progress_, judge(progress_, observation_, kNow)});
    return canvas;
  }

  // The colour of the box around the face, on the left one of its sides.
  cv::Scalar box_color(std::size_t face) const {
    const cv::Rect place = place_of_picture(layout_.picture, color_.size());
    const double scale = static_cast<double>(place.width) / color_.cols;
    const cv::Rect box = observation_.faces.at(face).box;
    const cv::Point point(place.x + static_cast<int>(box.x * scale),
                          place.y + static_cast<int>((box.y + 0.5 * box.height) * scale));
    return cv::Scalar(drawn().at<cv::Vec3b>(point));
  }

  // The share of the pose's bar that has the colour, along its middle.
  double filled(std::size_t pose, const cv::Scalar& color) const {
    const int width = (layout_.bars.width - 2 * layout_.margin) / 3;
    const cv::Rect line(layout_.bars.x + static_cast<int>(pose) * (width + layout_.margin),
                        layout_.bars.y + 3 * layout_.bars.height / 4 - layout_.margin / 4, width,
                        1);
    return static_cast<double>(pixels_of(drawn()(line), color)) / width;
  }

  EnrolmentLayout layout_ = enrolment_layout(GetParam());
  cv::Mat color_{540, 960, CV_8UC3, cv::Scalar(60, 70, 80)};
  EnrolmentProgress progress_ = running_enrolment();
  Observation observation_ = observation_of(good_face());
};

TEST_P(DrawEnrolment, HasTheSizeThatIsWanted) {
  EXPECT_EQ(drawn().size(), GetParam());
  EXPECT_EQ(drawn().type(), CV_8UC3);
}

TEST_P(DrawEnrolment, ShowsThePictureInItsShape) {
  observation_.faces.clear();
  color_.colRange(480, 960).setTo(cv::Scalar(10, 200, 30));
  const cv::Mat canvas = drawn();
  const cv::Rect place = place_of_picture(layout_.picture, color_.size());
  EXPECT_NEAR(static_cast<double>(place.width) / place.height, 960.0 / 540.0, 0.02);
  cv::Mat expected;
  cv::resize(color_, expected, place.size(), 0, 0, cv::INTER_AREA);
  EXPECT_TRUE(same_pixels(canvas(place).clone(), expected));
}

TEST_P(DrawEnrolment, HasABlankPlaceBeforeTheFirstPicture) {
  color_.release();
  progress_.first_picture.reset();
  progress_.last_picture.reset();
  observation_.faces.clear();
  EXPECT_EQ(pixels_of(drawn()(layout_.picture), palette::kPictureGround), layout_.picture.area());
}

TEST_P(DrawEnrolment, BoxesAGoodFaceInGreen) {
  EXPECT_EQ(box_color(0), cv::Scalar(palette::kGood));
  progress_.last_taken = kNow;
  EXPECT_EQ(box_color(0), cv::Scalar(palette::kGood));
}

TEST_P(DrawEnrolment, BoxesAFaceInOrangeThatIsNotTaken) {
  progress_.paused = true;
  EXPECT_EQ(box_color(0), cv::Scalar(palette::kDegraded));
  progress_.paused = false;
  observation_.faces[0].quality = "too_blurry";
  EXPECT_EQ(box_color(0), cv::Scalar(palette::kDegraded));
}

TEST_P(DrawEnrolment, BoxesTheOthersInYellow) {
  FaceInfo smaller = good_face();
  smaller.box = {500, 300, 90, 90};
  observation_.faces.insert(observation_.faces.begin(), smaller);
  EXPECT_EQ(box_color(0), cv::Scalar(palette::kFallback));
  EXPECT_EQ(box_color(1), cv::Scalar(palette::kDegraded));
}

TEST_P(DrawEnrolment, BoxesNobodyInAnOldPicture) {
  progress_.last_picture = kNow - std::chrono::seconds(5);
  EXPECT_EQ(box_color(0), cv::Scalar(60, 70, 80));
  EXPECT_EQ(pixels_of(drawn()(layout_.details), palette::kRowValue), 0);
}

TEST_P(DrawEnrolment, FillsTheBarsAsSamplesAreTaken) {
  progress_of(progress_, Pose::kFront).taken = 3;
  progress_of(progress_, Pose::kRight).taken = 10;
  EXPECT_NEAR(filled(0, palette::kGood), 0.3, 0.02);
  EXPECT_EQ(filled(1, palette::kGood), 0.0);
  EXPECT_GT(filled(2, palette::kGood), 0.97);
}

TEST_P(DrawEnrolment, GreysTheBarsOfSkippedPoses) {
  progress_of(progress_, Pose::kLeft).taken = 5;
  progress_of(progress_, Pose::kLeft).skipped = true;
  EXPECT_EQ(filled(1, palette::kGood), 0.0);
  EXPECT_NEAR(filled(1, palette::kUntrustedVoice), 0.5, 0.02);
}

// In the colour of the face's values and in no other place of the panel.
TEST_P(DrawEnrolment, MarksAMissedLimitInRed) {
  EXPECT_EQ(pixels_of(drawn()(layout_.details), palette::kUnavailable), 0);
  observation_.faces[0].sharpness = 12.0;
  EXPECT_GT(pixels_of(drawn()(layout_.details), palette::kUnavailable), 0);
}

TEST_P(DrawEnrolment, SaysInRedThatAFaceIsANearCopy) {
  observation_.nearest = 3.0;
  observation_.near_copy = true;
  const int copied = reddish_pixels_of(drawn()(layout_.details));
  progress_.paused = true;
  const int paused = reddish_pixels_of(drawn()(layout_.details));
  EXPECT_GT(paused, 0);
  EXPECT_GT(copied, 2 * paused);
}

// All ink of the instruction is inside its band, and there is as much as the sentence needs.
TEST_P(DrawEnrolment, WritesTheWholeInstruction) {
  for (int taken : {0, 10}) {
    progress_of(progress_, Pose::kFront).taken = taken;
    const std::string sentence = taken == 0
                                     ? "Look into the camera"
                                     : "Turn your head until the camera sees your left cheek";
    const cv::Rect room(layout_.instruction.x, layout_.instruction.y + layout_.margin / 2,
                        layout_.instruction.width, layout_.instruction.height - layout_.margin);
    cv::Mat expected(GetParam(), CV_8UC3, cv::Scalar(palette::kBackground));
    drawFittedText(expected, sentence, room, room.height / 2, palette::kPictureLabel);
    EXPECT_TRUE(same_pixels(drawn()(room).clone(), expected(room).clone()));
  }
}

TEST_P(DrawEnrolment, DrawsNothingBetweenItsParts) {
  progress_.write_failure = "No samples can be written to /" + std::string(200, 'x') + ": Full.";
  const cv::Rect whole(cv::Point(), GetParam());
  const cv::Point outline(layout_.margin / 3, layout_.margin / 3);
  cv::Mat canvas = drawn();
  for (const cv::Rect& part :
       {layout_.instruction, layout_.picture, layout_.details, layout_.bars, layout_.keys}) {
    EXPECT_EQ(part & whole, part);
    const cv::Rect with_outline(part.tl() - outline, part.size() + cv::Size(2 * outline));
    canvas(with_outline & whole).setTo(cv::Scalar(palette::kBackground));
  }
  EXPECT_EQ(pixels_of(canvas, palette::kBackground), GetParam().area());
}

std::string size_name(const ::testing::TestParamInfo<cv::Size>& info) {
  return std::to_string(info.param.width) + "x" + std::to_string(info.param.height);
}

INSTANTIATE_TEST_SUITE_P(AnySize, DrawEnrolment, ::testing::ValuesIn(kSizes), size_name);

TEST(DrawEnrolmentCanvas, IsNeverSmallerThanTheSmallestWindow) {
  const Observation observation;
  const EnrolmentProgress progress;
  const cv::Mat none;
  cv::Mat canvas;
  draw_enrolment(canvas, {200, 100}, {none, observation, progress, {}});
  EXPECT_EQ(canvas.size(), cv::Size(800, 480));
}

}  // namespace
}  // namespace halcyra
