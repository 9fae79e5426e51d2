#include "dashboard/preview_insets.hpp"

#include <algorithm>
#include <string>

#include <opencv2/imgproc.hpp>

#include "dashboard/panel_drawing.hpp"

namespace halcyra {
namespace {

const cv::Scalar kFill(8, 11, 16);
const cv::Scalar kOutline(52, 64, 80);
const cv::Scalar kLabelColor(245, 250, 255);

constexpr double kShare = 0.28;  // of the area's width and height
constexpr int kEdge = 14;        // distance from the area's top and right edge
constexpr int kSpacing = 10;     // between the insets
constexpr int kLeastBelow = 23;  // free pixels below the lower inset must be more

int inset_length(int area_length, int least) {
  return std::clamp(static_cast<int>(kShare * area_length), least,
                    std::max(least, area_length / 2));
}

cv::Rect upper_inset(const cv::Rect& area) {
  const cv::Size size(inset_length(area.width, 140), inset_length(area.height, 86));
  return {cv::Point(area.x + area.width - size.width - kEdge, area.y + kEdge), size};
}

void drawInset(cv::Mat& canvas, const cv::Rect& inset, const cv::Mat& picture,
               const std::string& name) {
  cv::rectangle(canvas, inset, kFill, cv::FILLED, cv::LINE_8);
  if (!picture.empty()) {
    cv::Mat target = canvas(inset);
    cv::resize(picture, target, target.size(), 0, 0, cv::INTER_AREA);
  }
  cv::rectangle(canvas, inset, kOutline, 1, cv::LINE_8);
  put(canvas, picture.empty() ? name + " UNAVAILABLE" : "LIVE " + name, {inset.x + 8, inset.y + 22},
      0.34, kLabelColor, 1);
}

}  // namespace

void drawPreviewInsets(cv::Mat& canvas, const cv::Rect& area, const cv::Mat& infrared,
                       const cv::Mat& depth) {
  if (infrared.empty() && depth.empty()) return;
  const cv::Rect upper = upper_inset(area);
  drawInset(canvas, upper, infrared, "IR");
  const cv::Rect lower = upper + cv::Point(0, upper.height + kSpacing);
  if (area.br().y - lower.br().y > kLeastBelow) drawInset(canvas, lower, depth, "DEPTH");
}

}  // namespace halcyra
