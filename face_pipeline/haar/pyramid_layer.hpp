// One shrunken copy of a picture as sums over rectangles.
#pragma once

#include <cstdint>
#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra::haar {

// Where a row of `pitch` entries holds the columns of an integral image. Layers with step 1 keep
// them in order. Layers with step 2 keep the even columns first and the odd ones from `odd_start`
// on. So what neighbouring windows read is adjacent either way.
struct PlaneLayout {
  int pitch = 0;
  int odd_start = 0;  // half of the pitch
};

// Each plane is an integral image: entry (x, y) is the sum over all pixels above and to the left of
// (x, y), so there is one more row and column than in the shrunken picture.
struct PyramidLayer {
  float scale = 1.0F;
  cv::Size size;  // of the shrunken picture
  int step = 1;   // distance of neighbouring windows, in columns and in rows: 1 or 2
  PlaneLayout layout;
  cv::Mat shrunken;  // 8-bit, one channel
  std::vector<std::int32_t> sums;
  std::vector<std::int32_t> square_sums;  // modulo 2^32
  std::vector<std::uint16_t> low_sums;    // `sums` modulo 2^16
};

}  // namespace halcyra::haar
