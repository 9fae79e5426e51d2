#include "enroll/face_details.hpp"

#include <cmath>

#include "enroll/sample_limits.hpp"
#include "face_pipeline/quality_gate.hpp"

namespace halcyra {
namespace {

std::string whole(double number) { return std::to_string(std::lround(number)); }

FaceDetail at_least(const std::string& name, double value, double least) {
  return {name, whole(std::floor(value)), "at least " + whole(least), value < least};
}

FaceDetail size_detail(cv::Size size) {
  return {"size", std::to_string(size.width) + " x " + std::to_string(size.height),
          "at least " + std::to_string(kLeastFaceSide),
          size.width < kLeastFaceSide || size.height < kLeastFaceSide};
}

FaceDetail brightness_detail(double brightness) {
  const bool too_bright = brightness > kMostBrightness;
  return {"brightness", whole(too_bright ? std::ceil(brightness) : std::floor(brightness)),
          whole(kLeastBrightness) + " to " + whole(kMostBrightness),
          too_bright || brightness < kLeastBrightness};
}

FaceDetail pose_detail(const std::string& detector_type, const EnrolmentProgress& progress) {
  const std::optional<Pose> pose = pose_found_by(detector_type);
  if (!pose) return {"pose", "none", "", true};
  if (is_wanted(progress, *pose)) return {"pose", stage_name(*pose), "wanted", false};
  const bool skipped = progress_of(progress, *pose).skipped;
  return {"pose", stage_name(*pose), skipped ? "skipped" : "complete", true};
}

}  // namespace

std::vector<FaceDetail> face_details(const FaceInfo& face, const EnrolmentProgress& progress,
                                     const Observation& observation) {
  std::vector<FaceDetail> details = {size_detail(face.box.size()),
                                     brightness_detail(face.brightness),
                                     at_least("contrast", face.contrast, kLeastContrast),
                                     at_least("sharpness", face.sharpness, kLeastSharpness),
                                     pose_detail(face.detector_type, progress)};
  if (observation.nearest) {
    details.push_back(at_least("nearest", *observation.nearest, kNearCopyDistance));
    details.back().missed = observation.near_copy;
  }
  return details;
}

}  // namespace halcyra
