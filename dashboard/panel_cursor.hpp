// Where the next text line of a panel goes.
#pragma once

#include <cstdint>

#include <opencv2/core/types.hpp>

namespace halcyra {

struct PanelCursor {
  cv::Rect panel;                // the whole panel
  cv::Rect content;              // the writable area below the title
  std::int32_t y = 0;            // baseline of the next line
  std::int32_t line_height = 0;  // pixels from one baseline to the next
  bool overflow = false;         // a line was refused for lack of room
};

}  // namespace halcyra
