// detect_multi with our cascades and with OpenCV's.
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>

#include "app/run_state/options.hpp"
#include "face_pipeline/face_detection.hpp"
#include "face_pipeline/haar/fast_cascade_classifier.hpp"
#include "tests/face_pipeline/detection_comparison.hpp"
#include "tests/face_pipeline/haar/classifier_comparison.hpp"
#include "tests/face_pipeline/haar/sample_pictures.hpp"
#include "tests/support/same_pixels.hpp"

namespace halcyra::haar {
namespace {

using Detections = std::vector<Detection>;

struct Cascades {
  cv::CascadeClassifier frontal;
  cv::CascadeClassifier profile;
};

Cascades opencv_cascades() {
  return {cv::CascadeClassifier(Options().cascade_path),
          cv::CascadeClassifier(Options().profile_cascade_path)};
}

Cascades fast_cascades() {
  Cascades cascades;
  load_fast_cascade(cascades.frontal, Options().cascade_path);
  load_fast_cascade(cascades.profile, Options().profile_cascade_path);
  return cascades;
}

// Neither the faces nor the caller's pixels may differ. Returns the number of faces.
std::size_t expect_same_detections(Cascades& expected_from, Cascades& from, const cv::Mat& picture,
                                   const Options& options) {
  const ThreadCount one(1);
  cv::Mat expected_pixels = picture.clone();
  cv::Mat pixels = picture.clone();
  const Detections expected =
      detect_multi(expected_from.frontal, &expected_from.profile, expected_pixels, options);
  EXPECT_EQ(detect_multi(from.frontal, &from.profile, pixels, options), expected)
      << options.detector_type << ", " << picture.size() << " at " << options.detect_scale;
  EXPECT_TRUE(same_pixels(pixels, expected_pixels));
  return expected.size();
}

// A face on the left and its mirror image on the right.
cv::Mat two_faces(const cv::Size& size) {
  cv::Mat both;
  cv::hconcat(portrait(), mirror_image(portrait()), both);
  cv::Mat resized;
  cv::resize(both, resized, size, 0, 0, cv::INTER_AREA);
  return resized;
}

TEST(SharedSearch, FindsWhatSeparateSearchesFind) {
  Cascades opencv = opencv_cascades();
  Cascades fast = fast_cascades();
  std::size_t found = 0;
  for (const cv::Size size : {cv::Size(360, 180), cv::Size(359, 180), cv::Size(360, 181),
                              cv::Size(302, 151), cv::Size(60, 44), cv::Size(40, 30)}) {
    for (const double detect_scale : {0.5, 0.75}) {
      Options options;
      options.detect_scale = detect_scale;
      options.min_neighbors = 0;
      found += expect_same_detections(opencv, fast, two_faces(size), options);
    }
  }
  EXPECT_GT(found, 10U);
}

// Half of 1996 columns, shrunken by one of the scales, is not the mirror image of what the mirrored
// columns become. In this picture it costs a face.
TEST(SharedSearch, TurnsThePictureItselfWhereShrinkingDoesNotMirror) {
  Cascades opencv = opencv_cascades();
  Cascades fast = fast_cascades();
  cv::RNG random(8);
  cv::Mat row = clouds({1996, 240}, random);
  for (int i = 0; i < 10; ++i) {
    const cv::Mat face = i % 2 == 0 ? portrait() : mirror_image(portrait());
    face.copyTo(row(cv::Rect(cv::Point(10 + 200 * i, 20), face.size())));
  }
  Options options;
  options.min_neighbors = 0;
  options.detector_type = "profile_right";
  EXPECT_GT(expect_same_detections(opencv, fast, row, options), 0U);
}

TEST(SharedSearch, FindsTheSameInEveryStyleAndAtFullScale) {
  Cascades opencv = opencv_cascades();
  Cascades fast = fast_cascades();
  for (const std::string style :
       {"frontal", "profile_left", "profile_right", "frontal_or_profile"}) {
    for (const double detect_scale : {0.5, 1.0}) {
      Options options;
      options.detector_type = style;
      options.detect_scale = detect_scale;
      options.min_neighbors = 1;
      expect_same_detections(opencv, fast, two_faces({240, 120}), options);
    }
  }
}

TEST(SharedSearch, FindsTheSameWithOneCascadeOfEachKind) {
  Cascades opencv = opencv_cascades();
  Cascades mixed = opencv_cascades();
  mixed.profile = fast_cascades().profile;
  Options options;
  options.min_neighbors = 0;
  EXPECT_GT(expect_same_detections(opencv, mixed, two_faces({300, 150}), options), 0U);
}

TEST(SharedSearch, LooksAtEachPictureAnew) {
  Cascades fast = fast_cascades();
  Cascades opencv = opencv_cascades();
  cv::RNG random(4);
  for (int round = 0; round < 6; ++round) {
    expect_same_detections(opencv, fast, face_before_clouds({200, 160}, random), Options());
  }
}

TEST(SharedSearch, ThrowsWhatOpenCvThrows) {
  Cascades fast = fast_cascades();
  Options standing_still;
  standing_still.scale_factor = 1.0;
  EXPECT_THROW(detect_multi(fast.frontal, &fast.profile, two_faces({120, 60}), standing_still),
               cv::Exception);
  EXPECT_THROW(detect_multi(fast.frontal, &fast.profile, cv::Mat(), Options()), cv::Exception);
}

// The mirrored pass on the shared pyramid relies on this.
TEST(SharedSearch, MayMirrorAfterHalvingAndEqualising) {
  cv::RNG random(5);
  for (int round = 0; round < 50; ++round) {
    const cv::Size size(2 * random.uniform(1, 200), 2 * random.uniform(1, 100));
    const cv::Mat picture = noise(size, 0, 255, random);
    cv::Mat shrunken;
    cv::resize(picture, shrunken, cv::Size(), 0.5, 0.5, cv::INTER_AREA);
    cv::equalizeHist(shrunken, shrunken);
    cv::Mat mirrored_and_shrunken;
    cv::resize(mirror_image(picture), mirrored_and_shrunken, cv::Size(), 0.5, 0.5, cv::INTER_AREA);
    cv::equalizeHist(mirrored_and_shrunken, mirrored_and_shrunken);
    EXPECT_TRUE(same_pixels(mirrored_and_shrunken, mirror_image(shrunken))) << size;
  }
}

}  // namespace
}  // namespace halcyra::haar
