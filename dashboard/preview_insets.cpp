#include "dashboard/preview_insets.hpp"

#include <algorithm>
#include <string>

#include <opencv2/imgproc.hpp>

#include "dashboard/dashboard_geometry.hpp"
#include "dashboard/palette.hpp"
#include "dashboard/panel_drawing.hpp"

namespace halcyra {
namespace {

constexpr double kShare = 0.28;  // of the area's width and height
constexpr int kLeastInsetWidth = 140;
constexpr int kLeastInsetHeight = 86;
constexpr int kSpacing = 10;     // between the insets
constexpr int kLeastBelow = 24;  // pixels that must stay free below the lower inset

int inset_length(int area_length, int least) {
  return std::clamp(static_cast<int>(kShare * area_length), least,
                    std::max(least, area_length / 2));
}

cv::Rect upper_inset(const cv::Rect& area) {
  const cv::Size size(inset_length(area.width, kLeastInsetWidth),
                      inset_length(area.height, kLeastInsetHeight));
  return {cv::Point(area.x + area.width - size.width - kOverlayInset, area.y + kOverlayInset),
          size};
}

void drawInset(cv::Mat& canvas, const cv::Rect& inset, const cv::Mat& picture,
               const std::string& name) {
  cv::rectangle(canvas, inset, palette::kPictureGround, cv::FILLED, cv::LINE_8);
  if (!picture.empty()) drawScaled(canvas, inset, picture);
  cv::rectangle(canvas, inset, palette::kPanelOutline, 1, cv::LINE_8);
  put(canvas, picture.empty() ? name + " UNAVAILABLE" : "LIVE " + name, {inset.x + 8, inset.y + 22},
      0.34, palette::kPictureLabel, 1);
}

}  // namespace

void drawPreviewInsets(cv::Mat& canvas, const cv::Rect& area, const cv::Mat& infrared,
                       const cv::Mat& depth) {
  if (infrared.empty() && depth.empty()) return;
  const cv::Rect upper = upper_inset(area);
  drawInset(canvas, upper, infrared, "IR");
  const cv::Rect lower = upper + cv::Point(0, upper.height + kSpacing);
  if (area.br().y - lower.br().y >= kLeastBelow) drawInset(canvas, lower, depth, "DEPTH");
}

}  // namespace halcyra
