// Fills triangles of a picture: finds the pixels inside, and interpolates the corners' values
// there.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include <opencv2/core/types.hpp>

#include "virtual_kinect/room/four_floats.hpp"

namespace halcyra::virtual_kinect::room {

// The values that vary linearly over a triangle, in fours.
template <std::size_t kFours>
using Values = std::array<FourFloats, kFours>;

// A corner in pixels (see Pinhole), with its values.
template <std::size_t kFours>
struct Corner {
  float x = 0.0F;
  float y = 0.0F;
  Values<kFours> values{};
};

// Positive for triangles whose corners run clockwise in the picture.
template <std::size_t kFours>
float doubled_area(const Corner<kFours>& a, const Corner<kFours>& b, const Corner<kFours>& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// Calls plotter(column, row, values) for each pixel of `bounds` whose centre is inside the
// triangle, and for none where its corners run counter-clockwise. Of two triangles with a common
// edge, both may call it for a pixel on the edge, but never neither. What a pixel gets does not
// depend on the rows of `bounds`.
template <std::size_t kFours, typename Plot>
void fill_triangle(const Corner<kFours>& a, const Corner<kFours>& b, const Corner<kFours>& c,
                   const cv::Rect& bounds, const Plot& plotter) {
  const float area = doubled_area(a, b, c);
  if (area <= 0.0F) return;
  const auto first = [](float edge) { return static_cast<int>(std::ceil(edge - 0.5F)); };
  const auto last = [](float edge) { return static_cast<int>(std::floor(edge - 0.5F)); };
  const int left = std::max(bounds.x, first(std::min({a.x, b.x, c.x})));
  const int right = std::min(bounds.br().x - 1, last(std::max({a.x, b.x, c.x})));
  const int top = std::max(bounds.y, first(std::min({a.y, b.y, c.y})));
  const int bottom = std::min(bounds.br().y - 1, last(std::max({a.y, b.y, c.y})));
  if (left > right || top > bottom) return;
  // Weights of the corners b and c at a pixel's centre, and how they change along a row.
  const float inverse_area = 1.0F / area;
  const float weight_step_b = (c.y - a.y) * inverse_area;
  const float weight_step_c = (a.y - b.y) * inverse_area;
  Values<kFours> along_b;
  Values<kFours> along_c;
  Values<kFours> step;
  for (std::size_t i = 0; i < kFours; ++i) {
    along_b[i] = b.values[i] - a.values[i];
    along_c[i] = c.values[i] - a.values[i];
    step[i] = weight_step_b * along_b[i] + weight_step_c * along_c[i];
  }
  // Without branches, as it cannot be foreseen where a row enters the triangle.
  constexpr float kRim = -1e-5F;
  const auto is_inside = [](float weight_b, float weight_c) {
    return (static_cast<int>(weight_b >= kRim) & static_cast<int>(weight_c >= kRim) &
            static_cast<int>(weight_b + weight_c <= 1.0F - kRim)) != 0;
  };
  // A copy of its own, whose fields stay in registers whatever it writes to.
  const Plot plot = plotter;
  const float dx = static_cast<float>(left) + 0.5F - a.x;
  for (int row = top; row <= bottom; ++row) {
    const float dy = static_cast<float>(row) + 0.5F - a.y;
    float weight_b = weight_step_b * dx - (c.x - a.x) * inverse_area * dy;
    float weight_c = weight_step_c * dx + (b.x - a.x) * inverse_area * dy;
    int column = left;
    while (column <= right && !is_inside(weight_b, weight_c)) {
      weight_b += weight_step_b;
      weight_c += weight_step_c;
      ++column;
    }
    Values<kFours> values;
    for (std::size_t i = 0; i < kFours; ++i) {
      values[i] = a.values[i] + weight_b * along_b[i] + weight_c * along_c[i];
    }
    while (column <= right && is_inside(weight_b, weight_c)) {
      plot(column, row, values);
      weight_b += weight_step_b;
      weight_c += weight_step_c;
      ++column;
      for (std::size_t i = 0; i < kFours; ++i) values[i] += step[i];
    }
  }
}

}  // namespace halcyra::virtual_kinect::room
