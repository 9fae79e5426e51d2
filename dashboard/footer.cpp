#include "dashboard/footer.hpp"

#include <algorithm>
#include <string>

#include <opencv2/imgproc.hpp>

#include "dashboard/font_scale.hpp"
#include "dashboard/panel_drawing.hpp"
#include "dashboard/text_cut.hpp"

namespace halcyra {
namespace {

const cv::Scalar kBand(34, 31, 20);
const cv::Scalar kTextColor(92, 206, 245);

constexpr std::size_t kMostLines = 2;

cv::Rect band_rect(const DashboardGeometry& g) {
  // The margin of a narrow window is raised to its least value; half of that would be too low.
  const bool narrow = static_cast<int>(g.width * 0.015) < 14;
  const int below = narrow ? 6 : g.margin / 2;
  return {g.margin, g.height - g.footer_height - below, g.width - 2 * g.margin, g.footer_height};
}

PanelCursor band_cursor(const cv::Rect& band) {
  PanelCursor cursor;
  cursor.panel = band;
  cursor.content = cv::Rect(band.x + 10, band.y + 6, band.width - 20, band.height - 10);
  cursor.y = band.y + 19;
  cursor.line_height = 15;
  return cursor;
}

std::string safety_sentence(int width) {
  if (width < 1150) {
    return "Safety: Tracking and audio direction guide attention only; no owner control.";
  }
  return "Safety: Skeleton/audio/face signals guide attention only. Recognition is not "
         "security-grade. Unknown voice may converse, not control.";
}

}  // namespace

void drawFooter(cv::Mat& canvas, const DashboardGeometry& g) {
  const bool low = g.height < 620;
  const cv::Rect band = band_rect(g);
  cv::rectangle(canvas, band, kBand, cv::FILLED, cv::LINE_8);
  PanelCursor cursor = band_cursor(band);
  const double character_width = std::max((low ? 2.94 : 3.57) * g_font_scale, 6.0);
  const std::vector<std::string> lines =
      wrap(safety_sentence(g.width), static_cast<std::size_t>((band.width - 20) / character_width));
  for (std::size_t i = 0; i < std::min(lines.size(), kMostLines); ++i) {
    drawTextLine(canvas, cursor, lines[i], low ? 0.28 : 0.34, kTextColor, 1);
  }
}

}  // namespace halcyra
