// One shrunken copy of a picture as sums over rectangles.
#pragma once

#include <cstdint>
#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra::haar {

// Where the column x of an integral image stands in a row of `pitch` entries. Windows of a fine
// scale start at every other column. There, even columns stand first and odd ones from `odd_start`
// on, so that what neighbouring windows read is adjacent in either case.
struct PlaneLayout {
  int pitch = 0;
  int odd_start = 0;  // half of the pitch
};

// Entry (x, y) of a plane is the sum over all pixels above and to the left of (x, y); there is one
// more row and column than in the picture. All planes have the same layout.
struct PyramidLayer {
  float scale = 1.0F;
  cv::Size size;     // of the shrunken picture
  int step = 1;      // from one window to the next, in columns and in rows
  cv::Mat shrunken;  // 8-bit, one channel
  std::vector<std::int32_t> sums;
  std::vector<std::int32_t> square_sums;  // modulo 2^32
  std::vector<std::uint16_t> low_sums;    // `sums` modulo 2^16
};

}  // namespace halcyra::haar
