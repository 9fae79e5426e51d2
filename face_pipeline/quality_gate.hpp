// Measures a face crop and judges whether it is good enough to be recognised.
#pragma once

#include <string>

#include <opencv2/core/mat.hpp>

namespace halcyra {

// Smaller crops hold less detail than the recogniser's 160 x 160 probe can use.
constexpr int kLeastFaceSide = 80;  // pixels
constexpr double kLeastBrightness = 35.0;
constexpr double kMostBrightness = 220.0;
constexpr double kLeastContrast = 20.0;
constexpr double kLeastSharpness = 60.0;

struct FaceMeasures {
  double brightness;  // mean grey level, 0 to 255
  double contrast;    // standard deviation of the grey levels
  double sharpness;   // variance of the Laplacian
};

// `face` is an 8-bit one-channel crop with at least one pixel.
FaceMeasures measure_face(const cv::Mat& face);

// The first of these that applies: "too_small" (a side under 80 pixels), "too_dark" (brightness
// under 35), "too_bright" (over 220), "low_contrast" (under 20), "too_blurry" (sharpness under 60);
// if none does, "accepted".
std::string quality_verdict(cv::Size size, const FaceMeasures& measures);

}  // namespace halcyra
