#include "enroll/quality_text.hpp"

#include <cmath>

#include "enroll/report_text.hpp"

namespace halcyra {
namespace {

// 59.96 is not "60.0, at least 60".
std::string too_low(const std::string& name, double value, double limit) {
  return name + " " + decimal_text(std::floor(value * 10) / 10, 1) + ", at least " +
         decimal_text(limit, 0);
}

std::string too_high(const std::string& name, double value, double limit) {
  return name + " " + decimal_text(std::ceil(value * 10) / 10, 1) + ", at most " +
         decimal_text(limit, 0);
}

std::string size_text(int width, int height) {
  return std::to_string(width) + "x" + std::to_string(height);
}

}  // namespace

std::string measure_at_fault(const std::string& verdict, cv::Size size,
                             const FaceMeasures& measures) {
  if (verdict == "too_small") {
    return size_text(size.width, size.height) + " pixels, at least " +
           size_text(kLeastFaceSide, kLeastFaceSide);
  }
  if (verdict == "too_dark") return too_low("brightness", measures.brightness, kLeastBrightness);
  if (verdict == "too_bright") return too_high("brightness", measures.brightness, kMostBrightness);
  if (verdict == "low_contrast") return too_low("contrast", measures.contrast, kLeastContrast);
  if (verdict == "too_blurry") return too_low("sharpness", measures.sharpness, kLeastSharpness);
  return "";
}

std::string advice_for(const std::string& verdict) {
  if (verdict == "too_small") return "Come nearer to the camera.";
  if (verdict == "too_dark") return "Turn on a light in front of you.";
  if (verdict == "too_bright") return "Move out of the glare.";
  if (verdict == "low_contrast") return "Change the light, and clean the lens.";
  if (verdict == "too_blurry") return "Hold still, and clean the lens.";
  return "";
}

}  // namespace halcyra
