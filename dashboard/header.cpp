#include "dashboard/header.hpp"

#include <algorithm>

#include <opencv2/imgproc.hpp>

#include "dashboard/palette.hpp"
#include "dashboard/panel_drawing.hpp"

namespace halcyra {
namespace {

constexpr int kWideCanvas = 1120;        // width from which the subtitle and all keys fit
constexpr int kSubtitleFromTitle = 405;  // from the left end of the title
constexpr int kLeastHintsFromTitle = 665;
constexpr int kHintsFromRight = 730;  // from the right edge of the canvas

void drawWideHints(cv::Mat& canvas, const DashboardGeometry& g, int baseline) {
  put(canvas, "skeleton-first room awareness", {g.margin + kSubtitleFromTitle, baseline}, 0.38,
      palette::kHeaderSubtitle, 1);
  put(canvas, "1 RGB  2 IR  3 Depth  4 Skeletal  5 Combo  6 Room  7 Follow  M mic  B debug  Q quit",
      {std::max(g.width - kHintsFromRight, g.margin + kLeastHintsFromTitle), baseline}, 0.31,
      palette::kKeyHints, 1);
}

}  // namespace

void drawHeader(cv::Mat& canvas, const DashboardGeometry& g) {
  const int middle = g.header_height / 2;
  cv::rectangle(canvas, cv::Rect(0, 0, g.width, g.header_height), palette::kHeaderFill, cv::FILLED,
                cv::LINE_8);
  put(canvas, "Halcyra Control Center", {g.margin, middle + 12},
      g.height < kLowCanvas ? 0.54 : 0.82, palette::kHeaderTitle, 2);
  if (g.width >= kWideCanvas) {
    drawWideHints(canvas, g, middle + 10);
  } else {
    put(canvas, "1 RGB 2 IR 3 Depth 4 Skeletal 5 Combo 6 Room 7 Follow  M mic B debug",
        {g.margin, g.header_height - 8}, 0.28, palette::kKeyHints, 1);
  }
}

}  // namespace halcyra
