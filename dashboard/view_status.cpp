#include "dashboard/view_status.hpp"

#include <algorithm>

#include <opencv2/imgproc.hpp>

#include "dashboard/panel_drawing.hpp"
#include "dashboard/text_cut.hpp"

namespace halcyra {
namespace {

const cv::Scalar kFill(8, 11, 16);
const cv::Scalar kDetailColor(170, 182, 198);

struct CardLayout {
  int left;      // where all text begins
  int baseline;  // of the heading
  double heading_scale;
  double detail_scale;
  int line_step;
};

CardLayout layout_for(const cv::Rect& rect) {
  const bool low = rect.height < 165;
  const bool small = rect.height < 330;
  CardLayout layout;
  layout.left = rect.x + (rect.width > 341 ? rect.width / 18 : 18);
  layout.baseline = rect.y + (low ? 54 : rect.height / 3);
  layout.heading_scale = small ? 0.58 : 0.82;
  layout.detail_scale = small ? 0.34 : 0.42;
  layout.line_step = small ? 19 : 23;
  return layout;
}

}  // namespace

void drawViewStatus(cv::Mat& canvas, const cv::Rect& rect, const std::string& title,
                    const std::string& detail, const cv::Scalar& color) {
  const CardLayout layout = layout_for(rect);
  cv::rectangle(canvas, rect, kFill, cv::FILLED, cv::LINE_AA);
  put(canvas, title, {layout.left, layout.baseline}, layout.heading_scale, color, 2);
  const int bottom = rect.y + rect.height - 21;
  int y = layout.baseline + 34;
  for (const std::string& line :
       wrap(detail, static_cast<std::size_t>(std::max(rect.width / 11, 24)))) {
    if (y >= bottom) break;
    put(canvas, line, {layout.left, y}, layout.detail_scale, kDetailColor, 1);
    y += layout.line_step;
  }
}

}  // namespace halcyra
