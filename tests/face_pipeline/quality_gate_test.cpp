#include "face_pipeline/quality_gate.hpp"

#include <cmath>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

namespace halcyra {
namespace {

// ---- Verdict.

const cv::Size kLarge(200, 200);
constexpr FaceMeasures kGood = {128.0, 50.0, 500.0};

double just_below(double value) { return std::nextafter(value, 0.0); }
double just_above(double value) { return std::nextafter(value, 1e9); }

FaceMeasures with_brightness(double brightness) {
  return {brightness, kGood.contrast, kGood.sharpness};
}
FaceMeasures with_contrast(double contrast) {
  return {kGood.brightness, contrast, kGood.sharpness};
}
FaceMeasures with_sharpness(double sharpness) {
  return {kGood.brightness, kGood.contrast, sharpness};
}

TEST(QualityVerdict, AcceptsAGoodFace) { EXPECT_EQ(quality_verdict(kLarge, kGood), "accepted"); }

TEST(QualityVerdict, AsksFor80PixelsOnBothSides) {
  EXPECT_EQ(quality_verdict({80, 80}, kGood), "accepted");
  EXPECT_EQ(quality_verdict({79, 80}, kGood), "too_small");
  EXPECT_EQ(quality_verdict({80, 79}, kGood), "too_small");
  EXPECT_EQ(quality_verdict({79, 500}, kGood), "too_small");
  EXPECT_EQ(quality_verdict({500, 79}, kGood), "too_small");
  EXPECT_EQ(quality_verdict({1, 1}, kGood), "too_small");
}

TEST(QualityVerdict, AcceptsBrightnessFrom35To220) {
  EXPECT_EQ(quality_verdict(kLarge, with_brightness(35.0)), "accepted");
  EXPECT_EQ(quality_verdict(kLarge, with_brightness(just_below(35.0))), "too_dark");
  EXPECT_EQ(quality_verdict(kLarge, with_brightness(220.0)), "accepted");
  EXPECT_EQ(quality_verdict(kLarge, with_brightness(just_above(220.0))), "too_bright");
}

TEST(QualityVerdict, AcceptsContrastFrom20) {
  EXPECT_EQ(quality_verdict(kLarge, with_contrast(20.0)), "accepted");
  EXPECT_EQ(quality_verdict(kLarge, with_contrast(just_below(20.0))), "low_contrast");
}

TEST(QualityVerdict, AcceptsSharpnessFrom60) {
  EXPECT_EQ(quality_verdict(kLarge, with_sharpness(60.0)), "accepted");
  EXPECT_EQ(quality_verdict(kLarge, with_sharpness(just_below(60.0))), "too_blurry");
}

TEST(QualityVerdict, NamesTheFirstFault) {
  EXPECT_EQ(quality_verdict({10, 10}, {0, 0, 0}), "too_small");
  EXPECT_EQ(quality_verdict({10, 10}, {255, 0, 0}), "too_small");
  EXPECT_EQ(quality_verdict(kLarge, {0, 0, 0}), "too_dark");
  EXPECT_EQ(quality_verdict(kLarge, {255, 0, 0}), "too_bright");
  EXPECT_EQ(quality_verdict(kLarge, {100, 0, 0}), "low_contrast");
}

// ---- Measures. The means are exact as the sides are powers of two.

// Columns of two grey levels in turn.
cv::Mat stripes(int first, int second) {
  cv::Mat face(128, 128, CV_8UC1, cv::Scalar(first));
  for (int x = 1; x < face.cols; x += 2) face.col(x).setTo(cv::Scalar(second));
  return face;
}

TEST(MeasureFace, TakesBrightnessAndContrastFromTheGreyLevels) {
  const FaceMeasures measures = measure_face(stripes(15, 55));
  EXPECT_EQ(measures.brightness, 35.0);
  EXPECT_EQ(measures.contrast, 20.0);
}

TEST(MeasureFace, FindsNoContrastAndNoEdgesInOneGrey) {
  const FaceMeasures measures = measure_face(cv::Mat(64, 128, CV_8UC1, cv::Scalar(220)));
  EXPECT_EQ(measures.brightness, 220.0);
  EXPECT_EQ(measures.contrast, 0.0);
  EXPECT_EQ(measures.sharpness, 0.0);
}

// Each pixel has two neighbours of the other level, mirrored at the border: the Laplacian is plus
// and minus 2 x 40.
TEST(MeasureFace, TakesSharpnessFromTheVarianceOfTheLaplacian) {
  EXPECT_EQ(measure_face(stripes(15, 55)).sharpness, 6400.0);
  EXPECT_EQ(measure_face(stripes(55, 15)).sharpness, 6400.0);
}

// Sharpness is the spread of the Laplacian: where that is 2 throughout, it adds nothing.
TEST(MeasureFace, LeavesOutTheMeanOfTheLaplacian) {
  cv::Mat curved(64, 16, CV_8UC1);
  for (int x = 0; x < curved.cols; ++x) curved.col(x).setTo(cv::Scalar(x * x));
  // Mirrored, column 0 sees 1 on both sides: 2 as well. Column 15 sees 196 on both sides: -58.
  const double mean = (15 * 2.0 - 58) / 16;
  const double variance = (15 * 4.0 + 58 * 58) / 16 - mean * mean;
  const double deviation = std::sqrt(variance);
  EXPECT_EQ(measure_face(curved).sharpness, deviation * deviation);
}

TEST(MeasureFace, AgreesWithTheLibraryOnNoise) {
  cv::Mat noise(91, 87, CV_8UC1);
  cv::randu(noise, 0, 256);
  cv::Scalar mean;
  cv::Scalar deviation;
  cv::meanStdDev(noise, mean, deviation);
  const FaceMeasures measures = measure_face(noise);
  EXPECT_EQ(measures.brightness, mean[0]);
  EXPECT_EQ(measures.contrast, deviation[0]);

  cv::Mat laplacian;
  cv::Laplacian(noise, laplacian, CV_64F, 1, 1.0, 0.0);
  cv::meanStdDev(laplacian, mean, deviation);
  EXPECT_EQ(measures.sharpness, deviation[0] * deviation[0]);
}

TEST(MeasureFace, MeasuresASinglePixel) {
  const FaceMeasures measures = measure_face(cv::Mat(1, 1, CV_8UC1, cv::Scalar(77)));
  EXPECT_EQ(measures.brightness, 77.0);
  EXPECT_EQ(measures.contrast, 0.0);
  EXPECT_EQ(measures.sharpness, 0.0);
}

TEST(MeasureFace, LeavesTheFaceAsItIs) {
  const cv::Mat face = stripes(10, 90);
  const cv::Mat before = face.clone();
  measure_face(face);
  EXPECT_EQ(cv::norm(face, before, cv::NORM_INF), 0.0);
}

}  // namespace
}  // namespace halcyra
