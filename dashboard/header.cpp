#include "dashboard/header.hpp"

#include <algorithm>

#include <opencv2/imgproc.hpp>

#include "dashboard/panel_drawing.hpp"

namespace halcyra {
namespace {

const cv::Scalar kBand(20, 26, 36);
const cv::Scalar kTitleColor(238, 244, 252);
const cv::Scalar kSubtitleColor(134, 148, 167);
const cv::Scalar kHintColor(150, 162, 180);

void drawWideHints(cv::Mat& canvas, const DashboardGeometry& g, int middle) {
  put(canvas, "skeleton-first room awareness", {g.margin + 405, middle + 10}, 0.38, kSubtitleColor,
      1);
  put(canvas, "1 RGB  2 IR  3 Depth  4 Skeletal  5 Combo  6 Room  7 Follow  M mic  B debug  Q quit",
      {std::max(g.width - 730, g.margin + 665), middle + 10}, 0.31, kHintColor, 1);
}

}  // namespace

void drawHeader(cv::Mat& canvas, const DashboardGeometry& g) {
  const int middle = g.header_height / 2;
  cv::rectangle(canvas, cv::Rect(0, 0, g.width, g.header_height), kBand, cv::FILLED, cv::LINE_8);
  put(canvas, "Halcyra Control Center", {g.margin, middle + 12}, g.height < 620 ? 0.54 : 0.82,
      kTitleColor, 2);
  if (g.width >= 1120) {
    drawWideHints(canvas, g, middle);
  } else {
    put(canvas, "1 RGB 2 IR 3 Depth 4 Skeletal 5 Combo 6 Room 7 Follow  M mic B debug",
        {g.margin, g.header_height - 8}, 0.28, kHintColor, 1);
  }
}

}  // namespace halcyra
