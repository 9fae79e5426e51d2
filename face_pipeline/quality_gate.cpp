#include "face_pipeline/quality_gate.hpp"

#include <opencv2/imgproc.hpp>

namespace halcyra {

FaceMeasures measure_face(const cv::Mat& face) {
  cv::Scalar mean;
  cv::Scalar deviation;
  cv::meanStdDev(face, mean, deviation);
  cv::Mat laplacian;
  cv::Laplacian(face, laplacian, CV_64F, 1, 1.0, 0.0);
  cv::Scalar laplacian_mean;
  cv::Scalar laplacian_deviation;
  cv::meanStdDev(laplacian, laplacian_mean, laplacian_deviation);
  return {mean[0], deviation[0], laplacian_deviation[0] * laplacian_deviation[0]};
}

std::string quality_verdict(cv::Size size, const FaceMeasures& measures) {
  if (size.width < kLeastFaceSide || size.height < kLeastFaceSide) return "too_small";
  if (measures.brightness < kLeastBrightness) return "too_dark";
  if (measures.brightness > kMostBrightness) return "too_bright";
  if (measures.contrast < kLeastContrast) return "low_contrast";
  if (measures.sharpness < kLeastSharpness) return "too_blurry";
  return "accepted";
}

}  // namespace halcyra
