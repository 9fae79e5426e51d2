// What everything in the room is made of: curved surfaces, each a grid of points with a texture.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

struct Surface {
  int columns = 0;
  int rows = 0;
  // Row by row. As seen from outside, columns run to the right and rows run down. A closed surface
  // repeats its first column as its last.
  std::vector<Vec3> points;
  std::vector<Vec3> normals;          // outward, of length 1
  std::vector<float> openness;        // 1: light comes from everywhere, 0: from nowhere
  std::vector<cv::Mat> texture_mips;  // B, G, R, infrared; each half the size of the one before
  float gloss = 0.0F;                 // strength of the highlight
  float daylight_glow = 0.0F;         // light of its own, times the level of daylight
  float lamp_glow = 0.0F;             // and times that of the lamp

  std::size_t index(int column, int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
           static_cast<std::size_t>(column);
  }
};

// A surface by a formula: `point` takes u (along the columns) and v (along the rows) from 0 to 1,
// of which there are at least two each. The normals follow from the points; openness is 1.
Surface make_surface(int columns, int rows, const std::function<Vec3(float u, float v)>& point);

// Computes the normals from the points anew. `closed`: the last column is the first again.
void update_normals(Surface& surface, bool closed);

// A place between two neighbours of a row or a column of the grid.
struct GridPlace {
  int first;    // of the two
  float share;  // 0 at the first, 1 at the second
};

// Where u or v, from 0 to 1, is among `count` columns or rows.
GridPlace grid_place(float along, int count);

// The value at a place, between those at the four grid points around it. `values` has one for each
// point.
template <typename Value>
Value interpolated(const Surface& surface, const std::vector<Value>& values,
                   const GridPlace& column, const GridPlace& row) {
  const Value* p = &values[surface.index(column.first, row.first)];
  const Value* q = p + surface.columns;
  return mix(mix(p[0], p[1], column.share), mix(q[0], q[1], column.share), row.share);
}

}  // namespace halcyra::virtual_kinect::room
