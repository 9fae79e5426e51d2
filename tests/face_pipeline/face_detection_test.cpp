#include "face_pipeline/face_detection.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>

#include "app/run_state/options.hpp"
#include "face_pipeline/detection_merge.hpp"
#include "tests/face_pipeline/detection_comparison.hpp"
#include "tests/support/photograph.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra {
namespace {

using Boxes = std::vector<cv::Rect>;
using Detections = std::vector<Detection>;

// On one thread: on several, OpenCV's cascades find the same boxes in an order that varies.
class FaceDetection : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    threads_ = cv::getNumThreads();
    cv::setNumThreads(1);
    const Options defaults;
    frontal_ = new cv::CascadeClassifier(defaults.cascade_path);
    profile_ = new cv::CascadeClassifier(defaults.profile_cascade_path);
  }
  static void TearDownTestSuite() {
    delete frontal_;
    delete profile_;
    cv::setNumThreads(threads_);
  }

  static cv::CascadeClassifier& frontal() { return *frontal_; }
  static cv::CascadeClassifier& profile() { return *profile_; }

  // Every raw hit, so that there are many boxes of all kinds to compare.
  static Options raw_hits() {
    Options options;
    options.min_neighbors = 0;
    return options;
  }

 private:
  static inline int threads_ = 0;
  static inline cv::CascadeClassifier* frontal_ = nullptr;
  static inline cv::CascadeClassifier* profile_ = nullptr;
};

// The head and shoulders alone, 240 x 220: a smaller picture is searched faster.
cv::Mat portrait() { return photograph()(cv::Rect(80, 0, 240, 220)).clone(); }

cv::Mat grey_picture(const std::string& name) {
  cv::Mat picture = cv::imread(HALCYRA_TEST_DATA "/" + name, cv::IMREAD_GRAYSCALE);
  if (picture.empty()) throw std::runtime_error("no " + name + " in " HALCYRA_TEST_DATA);
  return picture;
}

// 506 x 190, with a face for each pass: a left profile, the photographed face, a right profile.
// Each gives many raw hits, so a few more or fewer do not matter. The profiles are not mirror
// images of each other, so a pass over the wrong side shows.
cv::Mat three_poses() {
  cv::Mat picture(190, 506, CV_8U, cv::Scalar(128));
  const cv::Mat left = grey_picture("profile_left.png");
  const cv::Mat front = photograph()(cv::Rect(144, 10, 160, 190));
  const cv::Mat right = grey_picture("profile_right.png");
  left.copyTo(picture(cv::Rect(cv::Point(), left.size())));
  front.copyTo(picture(cv::Rect(cv::Point(190, 0), front.size())));
  right.copyTo(picture(cv::Rect(cv::Point(350, 0), right.size())));
  return picture;
}

// ---- One pass, as plain OpenCV calls.

Boxes library_hits(cv::CascadeClassifier& cascade, const cv::Mat& working, const Options& options,
                   int least) {
  Boxes boxes;
  cascade.detectMultiScale(working, boxes, options.scale_factor, options.min_neighbors, 0,
                           cv::Size(least, least), cv::Size(0, 0));
  return boxes;
}

cv::Mat shrunk_and_equalised(const cv::Mat& grey, double scale) {
  cv::Mat shrunk;
  cv::resize(grey, shrunk, cv::Size(0, 0), scale, scale, cv::INTER_AREA);
  cv::Mat working;
  cv::equalizeHist(shrunk, working);
  return working;
}

int cut(double value) { return static_cast<int>(std::trunc(value)); }

Boxes scaled_back(Boxes boxes, double scale) {
  const double inverse = 1.0 / scale;
  for (cv::Rect& box : boxes) {
    box = cv::Rect(cut(box.x * inverse), cut(box.y * inverse), cut(box.width * inverse),
                   cut(box.height * inverse));
  }
  return boxes;
}

Boxes bare_pass(cv::CascadeClassifier& cascade, const cv::Mat& grey, const Options& options) {
  const int least = std::max(1, cut(options.min_face_size * options.detect_scale));
  return scaled_back(
      library_hits(cascade, shrunk_and_equalised(grey, options.detect_scale), options, least),
      options.detect_scale);
}

TEST_F(FaceDetection, FindsTheFaceInThePhotograph) {
  const cv::Mat grey = photograph();
  const Boxes boxes = detect_faces(frontal(), grey, Options());
  ASSERT_EQ(boxes.size(), 1U);
  // The eyes and the mouth.
  for (const cv::Point& place : {cv::Point(204, 101), cv::Point(247, 103), cv::Point(223, 145)}) {
    EXPECT_TRUE(boxes[0].contains(place)) << boxes[0] << place;
  }
  EXPECT_EQ(boxes, bare_pass(frontal(), grey, Options()));
}

TEST_F(FaceDetection, FindsWhatTheLibraryFindsAndInItsOrder) {
  const cv::Mat grey = portrait();
  const Boxes faces = detect_faces(frontal(), grey, raw_hits());
  EXPECT_GT(faces.size(), 10U);
  EXPECT_EQ(faces, bare_pass(frontal(), grey, raw_hits()));
  Options finer = raw_hits();
  finer.scale_factor = 1.05;
  EXPECT_EQ(detect_faces(frontal(), grey, finer), bare_pass(frontal(), grey, finer));
  EXPECT_GT(detect_faces(frontal(), grey, finer).size(), faces.size());
  const Boxes profiles = detect_faces(profile(), three_poses(), raw_hits());
  EXPECT_GT(profiles.size(), 10U);
  EXPECT_EQ(profiles, bare_pass(profile(), three_poses(), raw_hits()));
}

TEST_F(FaceDetection, LeavesTheCallersPixelsAloneWhenItShrinks) {
  const cv::Mat grey = portrait();
  detect_faces(frontal(), grey, Options());
  EXPECT_TRUE(same_pixels(grey, portrait()));
}

// 0.999 of 240 x 220 is 240 x 220 again.
TEST_F(FaceDetection, LeavesTheCallersPixelsAloneWhenShrinkingChangesNoSize) {
  Options options;
  options.detect_scale = 0.999;
  const cv::Mat grey = portrait();
  const Boxes boxes = detect_faces(frontal(), grey, options);
  EXPECT_TRUE(same_pixels(grey, portrait()));
  EXPECT_EQ(boxes, bare_pass(frontal(), portrait(), options));
}

TEST_F(FaceDetection, CutsOffFractionsWhenItScalesBack) {
  int fractions_rounding_would_lift = 0;
  for (const double scale : {0.6, 0.7}) {
    Options options = raw_hits();
    options.detect_scale = scale;
    const cv::Mat grey = portrait();
    EXPECT_EQ(detect_faces(frontal(), grey, options), bare_pass(frontal(), grey, options));
    const Boxes shrunk_boxes =
        library_hits(frontal(), shrunk_and_equalised(grey, scale), options, cut(30 * scale));
    for (const cv::Rect& box : shrunk_boxes) {
      fractions_rounding_would_lift += std::lround(box.x / scale) != cut(box.x / scale);
    }
  }
  EXPECT_GT(fractions_rounding_would_lift, 0);
}

// Half of 103 is 51.5, and the search has windows of 51 pixels.
TEST_F(FaceDetection, CutsOffTheFractionOfTheSmallestFace) {
  Options options = raw_hits();
  options.min_face_size = 103;
  const cv::Mat grey = portrait();
  const cv::Mat working = shrunk_and_equalised(grey, 0.5);
  const Boxes from_51 = scaled_back(library_hits(frontal(), working, options, 51), 0.5);
  const Boxes from_52 = scaled_back(library_hits(frontal(), working, options, 52), 0.5);
  ASSERT_NE(from_51, from_52);
  EXPECT_EQ(detect_faces(frontal(), grey, options), from_51);
}

TEST_F(FaceDetection, SearchesFromOnePixelWhenNoSmallestFaceIsGiven) {
  const cv::Mat grey = portrait();
  for (const int size : {1, 0, -5}) {
    Options options = raw_hits();
    options.min_face_size = size;
    EXPECT_EQ(
        detect_faces(frontal(), grey, options),
        scaled_back(library_hits(frontal(), shrunk_and_equalised(grey, 0.5), options, 1), 0.5));
  }
}

TEST_F(FaceDetection, EqualisesTheCallersPixelsAtFullScale) {
  cv::Mat equalised;
  cv::equalizeHist(portrait(), equalised);
  for (const double scale : {1.0, 2.0}) {
    Options options;
    options.detect_scale = scale;
    const cv::Mat grey = portrait();
    const Boxes boxes = detect_faces(frontal(), grey, options);
    EXPECT_TRUE(same_pixels(grey, equalised));
    const Boxes unscaled = library_hits(frontal(), equalised, options, cut(30 * scale));
    EXPECT_FALSE(unscaled.empty());
    EXPECT_EQ(boxes, scaled_back(unscaled, scale)) << scale;
  }
}

// ---- All passes.

Detections typed(const Boxes& boxes, const std::string& type) {
  Detections detections;
  for (const cv::Rect& box : boxes) detections.push_back({box, type});
  return detections;
}

Boxes bare_mirrored_pass(cv::CascadeClassifier& cascade, const cv::Mat& grey,
                         const Options& options) {
  cv::Mat mirrored;
  cv::flip(grey, mirrored, 1);
  Boxes boxes = bare_pass(cascade, mirrored, options);
  for (cv::Rect& box : boxes) box.x = grey.cols - box.x - box.width;
  return boxes;
}

bool has_type(const Detections& detections, const std::string& type) {
  return std::any_of(detections.begin(), detections.end(), [&type](const Detection& detection) {
    return detection.detector_type == type;
  });
}

class DetectMulti : public FaceDetection {
 protected:
  static Options style(const std::string& detector_type) {
    Options options = raw_hits();
    options.detector_type = detector_type;
    return options;
  }

  Detections frontal_pass() { return typed(bare_pass(frontal(), grey_, raw_), "frontal"); }
  Detections left_pass() { return typed(bare_pass(profile(), grey_, raw_), "profile_left"); }
  Detections right_pass() {
    return typed(bare_mirrored_pass(profile(), grey_, raw_), "profile_right");
  }

  const cv::Mat grey_ = three_poses();
  const Options raw_ = style("frontal_or_profile");
};

TEST_F(DetectMulti, RunsTheFrontalPassAloneInItsStyle) {
  const Detections expected = dedupe(frontal_pass());
  EXPECT_FALSE(expected.empty());
  EXPECT_EQ(detect_multi(frontal(), &profile(), grey_, style("frontal")), expected);
}

TEST_F(DetectMulti, RunsTheLeftPassAloneInItsStyle) {
  const Detections expected = dedupe(left_pass());
  EXPECT_FALSE(expected.empty());
  EXPECT_EQ(detect_multi(frontal(), &profile(), grey_, style("profile_left")), expected);
}

TEST_F(DetectMulti, RunsTheMirroredPassAloneInItsStyle) {
  const Detections expected = dedupe(right_pass());
  EXPECT_FALSE(expected.empty());
  EXPECT_EQ(detect_multi(frontal(), &profile(), grey_, style("profile_right")), expected);
}

// What looks to the left in the mirrored picture looks to the right in the picture itself.
TEST_F(DetectMulti, MapsMirroredBoxesBack) {
  cv::Mat mirrored;
  cv::flip(grey_, mirrored, 1);
  const Detections left = detect_multi(frontal(), &profile(), mirrored, style("profile_left"));
  const Detections right = detect_multi(frontal(), &profile(), grey_, style("profile_right"));
  EXPECT_FALSE(left.empty());
  ASSERT_EQ(right.size(), left.size());
  for (std::size_t i = 0; i < left.size(); ++i) {
    const cv::Rect& found = left[i].box;
    const cv::Rect back(grey_.cols - found.x - found.width, found.y, found.width, found.height);
    EXPECT_EQ(right[i], (Detection{back, "profile_right"}));
  }
}

TEST_F(DetectMulti, MergesAllPassesInTheirOrder) {
  Detections all = frontal_pass();
  for (const Detections& pass : {left_pass(), right_pass()}) {
    all.insert(all.end(), pass.begin(), pass.end());
  }
  const Detections expected = dedupe(all);
  ASSERT_LT(expected.size(), all.size());
  // Each pass has a face of its own here, so none may be left out.
  for (const char* type : {"frontal", "profile_left", "profile_right"}) {
    ASSERT_TRUE(has_type(expected, type)) << type;
  }
  EXPECT_EQ(detect_multi(frontal(), &profile(), grey_, raw_), expected);
}

TEST_F(DetectMulti, FindsTheOneFaceWithTheDefaults) {
  const cv::Mat grey = photograph();
  EXPECT_EQ(detect_multi(frontal(), &profile(), grey, Options()),
            typed(bare_pass(frontal(), grey, Options()), "frontal"));
}

TEST_F(DetectMulti, LeavesTheProfilePassesOutWithoutTheCascade) {
  EXPECT_EQ(detect_multi(frontal(), nullptr, grey_, raw_), dedupe(frontal_pass()));
  EXPECT_EQ(detect_multi(frontal(), nullptr, grey_, style("frontal")), dedupe(frontal_pass()));
  EXPECT_TRUE(detect_multi(frontal(), nullptr, grey_, style("profile_left")).empty());
  EXPECT_TRUE(detect_multi(frontal(), nullptr, grey_, style("profile_right")).empty());
}

// The faces are then judged and recognised on the equalised pixels.
TEST_F(DetectMulti, EqualisesTheCallersPixelsInEachPassAtFullScale) {
  cv::Mat once;
  cv::equalizeHist(portrait(), once);
  cv::Mat twice;
  cv::equalizeHist(once, twice);
  const std::vector<std::pair<std::string, cv::Mat>> cases = {
      {"frontal", once}, {"profile_left", once}, {"frontal_or_profile", twice}};
  for (const auto& [detector_type, expected] : cases) {
    Options options;
    options.detect_scale = 1.0;
    options.detector_type = detector_type;
    const cv::Mat grey = portrait();
    detect_multi(frontal(), &profile(), grey, options);
    EXPECT_TRUE(same_pixels(grey, expected)) << detector_type;
  }
}

TEST_F(DetectMulti, EqualisesOnlyTheMirrorImageOfAMirroredPass) {
  Options options;
  options.detect_scale = 1.0;
  options.detector_type = "profile_right";
  const cv::Mat grey = portrait();
  detect_multi(frontal(), &profile(), grey, options);
  EXPECT_TRUE(same_pixels(grey, portrait()));
}

}  // namespace
}  // namespace halcyra
