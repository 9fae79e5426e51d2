#include "dashboard/view_status.hpp"

#include <algorithm>

#include <opencv2/imgproc.hpp>

#include "dashboard/palette.hpp"
#include "dashboard/panel_drawing.hpp"
#include "dashboard/text_cut.hpp"

namespace halcyra {
namespace {

constexpr int kSmallCard = 330;  // height below which all text is smaller
constexpr int kLeastLeft = 18;   // of the text, from the edge of the card
constexpr int kLeastHeadingBaseline = 54;
constexpr int kDetailBelowHeading = 34;
constexpr int kBottomMargin = 21;
constexpr int kCharacterWidth = 11;  // that is assumed for wrapping
constexpr int kLeastCharacters = 24;

struct CardLayout {
  int left;      // where all text begins
  int baseline;  // of the heading
  double heading_scale;
  double detail_scale;
  int line_step;
};

CardLayout layout_for(const cv::Rect& rect) {
  const bool small = rect.height < kSmallCard;
  CardLayout layout;
  layout.left = rect.x + std::max(kLeastLeft, rect.width / 18);
  layout.baseline = rect.y + std::max(kLeastHeadingBaseline, rect.height / 3);
  layout.heading_scale = small ? 0.58 : 0.82;
  layout.detail_scale = small ? 0.34 : 0.42;
  layout.line_step = small ? 19 : 23;
  return layout;
}

}  // namespace

void drawViewStatus(cv::Mat& canvas, const cv::Rect& rect, const std::string& title,
                    const std::string& detail, const cv::Scalar& color) {
  const CardLayout layout = layout_for(rect);
  cv::rectangle(canvas, rect, palette::kPictureGround, cv::FILLED, cv::LINE_AA);
  put(canvas, title, {layout.left, layout.baseline}, layout.heading_scale, color, 2);
  const int bottom = rect.y + rect.height - kBottomMargin;
  int y = layout.baseline + kDetailBelowHeading;
  const int characters = std::max(rect.width / kCharacterWidth, kLeastCharacters);
  for (const std::string& line : wrap(detail, static_cast<std::size_t>(characters))) {
    if (y >= bottom) break;
    put(canvas, line, {layout.left, y}, layout.detail_scale, palette::kMissingPictureDetail, 1);
    y += layout.line_step;
  }
}

}  // namespace halcyra
