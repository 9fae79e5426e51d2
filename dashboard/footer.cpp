#include "dashboard/footer.hpp"

#include <algorithm>
#include <string>

#include <opencv2/imgproc.hpp>

#include "dashboard/palette.hpp"
#include "dashboard/panel_drawing.hpp"
#include "dashboard/text_cut.hpp"

namespace halcyra {
namespace {

constexpr int kSideInset = 10;  // of the text, from the edges of the band
constexpr int kTopInset = 6;
constexpr int kBottomInset = 4;
constexpr int kFirstBaseline = 19;
constexpr int kLineHeight = 15;
constexpr std::size_t kMostLines = 2;
constexpr int kWideCanvas = 1150;  // width from which the long sentence is used

PanelCursor band_cursor(const cv::Rect& band) {
  PanelCursor cursor;
  cursor.panel = band;
  cursor.content = cv::Rect(band.x + kSideInset, band.y + kTopInset, band.width - 2 * kSideInset,
                            band.height - kTopInset - kBottomInset);
  cursor.y = band.y + kFirstBaseline;
  cursor.line_height = kLineHeight;
  return cursor;
}

std::string safety_sentence(int width) {
  if (width < kWideCanvas) {
    return "Safety: Tracking and audio direction guide attention only; no owner control.";
  }
  return "Safety: Skeleton/audio/face signals guide attention only. Recognition is not "
         "security-grade. Unknown voice may converse, not control.";
}

}  // namespace

void drawFooter(cv::Mat& canvas, const DashboardGeometry& g) {
  const bool low = g.height < kLowCanvas;
  const cv::Rect band(g.margin, g.height - g.footer_height - g.margin / 2, g.width - 2 * g.margin,
                      g.footer_height);
  cv::rectangle(canvas, band, palette::kFooterFill, cv::FILLED, cv::LINE_8);
  PanelCursor cursor = band_cursor(band);
  const std::vector<std::string> lines =
      wrap(safety_sentence(g.width), characters_in(cursor.content.width, low ? 2.94 : 3.57));
  for (std::size_t i = 0; i < std::min(lines.size(), kMostLines); ++i) {
    drawTextLine(canvas, cursor, lines[i], low ? 0.28 : 0.34, palette::kSafetySentence, 1);
  }
}

}  // namespace halcyra
