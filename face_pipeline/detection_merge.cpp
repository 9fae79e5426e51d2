#include "face_pipeline/detection_merge.hpp"

#include <algorithm>

namespace halcyra {
namespace {

constexpr double kLeastOverlap = 0.35;  // intersection over union
constexpr double kClearlyLarger = 1.2;  // ratio of areas

int pose_rank(const Detection& detection) {
  if (detection.detector_type == "frontal") return 3;
  if (detection.detector_type == "profile_left") return 2;
  if (detection.detector_type == "profile_right") return 2;
  return 1;
}

bool comes_before(const Detection& a, const Detection& b) {
  if (a.box.area() != b.box.area()) return a.box.area() > b.box.area();
  return pose_rank(a) > pose_rank(b);
}

bool has_no_area(const cv::Rect& box) { return box.width <= 0 || box.height <= 0; }

bool is_same_face(const Detection& a, const Detection& b) {
  if (has_no_area(a.box) || has_no_area(b.box)) return false;
  const cv::Rect common = a.box & b.box;
  if (has_no_area(common)) return false;
  const double both = static_cast<double>(a.box.area()) + b.box.area() - common.area();
  return both > 0 && common.area() / both >= kLeastOverlap;
}

// As the list is sorted by area, the second condition never holds; it completes the rule.
bool replaces(const Detection& later, const Detection& kept) {
  return pose_rank(later) > pose_rank(kept) || later.box.area() > kClearlyLarger * kept.box.area();
}

}  // namespace

std::vector<Detection> dedupe(std::vector<Detection> detections) {
  std::sort(detections.begin(), detections.end(), comes_before);
  std::vector<Detection> kept;
  for (const Detection& detection : detections) {
    const auto match = std::find_if(kept.begin(), kept.end(), [&](const Detection& known) {
      return is_same_face(detection, known);
    });
    if (match == kept.end()) {
      kept.push_back(detection);
    } else if (replaces(detection, *match)) {
      *match = detection;
    }
  }
  return kept;
}

}  // namespace halcyra
