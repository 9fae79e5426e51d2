#include "dashboard/preview_mapping.hpp"

#include <algorithm>

namespace halcyra {
namespace {

constexpr double kLeastShare = 0.62;  // of the frame's sides, for a follow crop
constexpr int kFaceMultiple = 3;      // a follow crop is at least this much larger than the face

struct Span {
  int start;
  int length;
};

// The crop along one axis: centred on the face, then shifted to stay inside the frame. At least one
// pixel long.
Span follow_span(int frame, int face_start, int face_length) {
  const int least = std::min(static_cast<int>(kLeastShare * frame), frame);
  const int length = std::max({1, least, std::min(kFaceMultiple * face_length, frame)});
  const int start = face_start + face_length / 2 - length / 2;
  return {std::max(0, std::min(start, frame - length)), length};
}

cv::Rect follow_crop(cv::Size frame, const cv::Rect& face) {
  const Span across = follow_span(frame.width, face.x, face.width);
  const Span down = follow_span(frame.height, face.y, face.height);
  return {across.start, down.start, across.length, down.length};
}

}  // namespace

PreviewMapping preview_mapping(cv::Size frame, const cv::Rect& area, const std::string& view,
                               const std::vector<FaceInfo>& faces) {
  const bool follows = view == "follow" && faces.size() == 1;
  return {follows ? follow_crop(frame, faces.front().box) : cv::Rect(cv::Point(0, 0), frame), area};
}

cv::Rect on_canvas(const PreviewMapping& mapping, const cv::Rect& box) {
  const cv::Rect shown = box & mapping.crop;
  if (shown.empty()) return {};
  const double x_ratio = static_cast<double>(mapping.area.width) / mapping.crop.width;
  const double y_ratio = static_cast<double>(mapping.area.height) / mapping.crop.height;
  const cv::Rect mapped(mapping.area.x + static_cast<int>((shown.x - mapping.crop.x) * x_ratio),
                        mapping.area.y + static_cast<int>((shown.y - mapping.crop.y) * y_ratio),
                        static_cast<int>(shown.width * x_ratio),
                        static_cast<int>(shown.height * y_ratio));
  return mapped & mapping.area;
}

}  // namespace halcyra
