#include "enroll/enrolment_layout.hpp"

#include <algorithm>
#include <cmath>

namespace halcyra {
namespace {

// Shares of the canvas' height.
constexpr double kInstructionShare = 0.18;
constexpr double kBarsShare = 0.14;
constexpr double kKeysShare = 0.06;
// Share of the width.
constexpr double kDetailsShare = 0.37;

int share_of(int length, double share) { return static_cast<int>(std::lround(length * share)); }

}  // namespace

EnrolmentLayout enrolment_layout(cv::Size canvas) {
  // The sizes were designed for a canvas of 1440 x 810.
  const double unit = std::min(canvas.width / 1440.0, canvas.height / 810.0);
  EnrolmentLayout layout;
  layout.margin = static_cast<int>(std::lround(14 * unit));
  layout.cap_height = static_cast<int>(std::lround(20 * unit));
  const int left = layout.margin;
  const int width = canvas.width - 2 * layout.margin;

  layout.instruction = {left, 0, width, share_of(canvas.height, kInstructionShare)};
  const int keys_height = share_of(canvas.height, kKeysShare);
  layout.keys = {left, canvas.height - keys_height, width, keys_height};
  const int bars_height = share_of(canvas.height, kBarsShare);
  layout.bars = {left, layout.keys.y - bars_height, width, bars_height};

  const int top = layout.instruction.height;
  const int height = layout.bars.y - layout.margin - top;
  const int details_width = share_of(width, kDetailsShare);
  layout.picture = {left, top, width - details_width - layout.margin, height};
  layout.details = {layout.picture.br().x + layout.margin, top, details_width, height};
  return layout;
}

cv::Rect place_of_picture(const cv::Rect& room, cv::Size picture) {
  const double scale = std::min(static_cast<double>(room.width) / picture.width,
                                static_cast<double>(room.height) / picture.height);
  const int width = std::max(1, static_cast<int>(picture.width * scale));
  const int height = std::max(1, static_cast<int>(picture.height * scale));
  return {room.x + (room.width - width) / 2, room.y + (room.height - height) / 2, width, height};
}

}  // namespace halcyra
