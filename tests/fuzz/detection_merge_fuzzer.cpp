// Merging detections: the result is a part of the input, in the promised order.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "face_pipeline/detection_merge.hpp"
#include "tests/face_pipeline/detection_comparison.hpp"
#include "tests/fuzz/requirement.hpp"

namespace halcyra {
namespace {

constexpr std::size_t kMostDetections = 40;

// Boxes come from pictures, and no picture has sides as long as this. Areas of larger boxes would
// overflow an int.
constexpr int kFarthest = 20000;

Detection detection_from(FuzzedDataProvider& input) {
  static const std::vector<const char*> kTypes = {"frontal", "profile_left", "profile_right",
                                                  "none"};
  Detection detection;
  detection.box.x = input.ConsumeIntegralInRange(-kFarthest, kFarthest);
  detection.box.y = input.ConsumeIntegralInRange(-kFarthest, kFarthest);
  detection.box.width = input.ConsumeIntegralInRange(0, kFarthest);
  detection.box.height = input.ConsumeIntegralInRange(0, kFarthest);
  detection.detector_type = kTypes[input.ConsumeIntegralInRange<std::size_t>(0, 3)];
  return detection;
}

double overlap(const cv::Rect& a, const cv::Rect& b) {
  const double common = (a & b).area();
  const double both = static_cast<double>(a.area()) + b.area() - common;
  return both > 0 ? common / both : 0;
}

void check(const std::vector<Detection>& given, const std::vector<Detection>& kept) {
  require(kept.size() <= given.size(), "merging makes no detections");
  require(kept.empty() == given.empty(), "the largest detection always has a place");
  for (const Detection& each : kept) {
    const auto known = [&](const Detection& detection) { return detection == each; };
    require(std::any_of(given.begin(), given.end(), known), "what is kept was given");
  }
}

// If all poses are equally good, no detection replaces another. So the kept ones are in the order
// of their areas, and no two overlap too much.
void check_of_one_pose(const std::vector<Detection>& kept) {
  for (std::size_t i = 0; i < kept.size(); ++i) {
    require(i == 0 || kept[i - 1].box.area() >= kept[i].box.area(), "the largest stand first");
    for (std::size_t j = 0; j < i; ++j) {
      require(overlap(kept[i].box, kept[j].box) < 0.35, "no two claim the same place");
    }
  }
}

}  // namespace
}  // namespace halcyra

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halcyra;
  FuzzedDataProvider input(data, size);
  std::vector<Detection> given;
  while (input.remaining_bytes() > 0 && given.size() < kMostDetections) {
    given.push_back(detection_from(input));
  }
  check(given, dedupe(given));
  for (Detection& detection : given) detection.detector_type = "frontal";
  check_of_one_pose(dedupe(given));
  return 0;
}
