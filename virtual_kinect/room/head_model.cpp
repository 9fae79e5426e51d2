#include "virtual_kinect/room/head_model.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "virtual_kinect/room/coat.hpp"
#include "virtual_kinect/room/face_paint.hpp"
#include "virtual_kinect/room/four_floats.hpp"
#include "virtual_kinect/room/head_shape.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr int kGridColumns = 145;  // odd: one column runs down the middle of the face
constexpr int kGridRows = 121;
const cv::Size kTextureSize(768, 576);

// Columns and rows lie closer together on the face than on the rest of the head.
Vec3 grid_direction(float u, float v) {
  const float side = 2.0F * u - 1.0F;
  const float azimuth = kPi * side * (0.5F + 0.5F * side * side);
  const float polar = kPi * v + 0.18F * std::sin(2.0F * kPi * v);
  return {std::sin(polar) * std::sin(azimuth), -std::cos(polar),
          -std::sin(polar) * std::cos(azimuth)};
}

Vec3 mirrored(const Vec3& p) { return {-p.x, p.y, p.z}; }

struct GridPoint {
  int column;
  int row;
};

// Those on the right half of the head; the other half mirrors it.
std::vector<GridPoint> right_half() {
  std::vector<GridPoint> points;
  for (int row = 0; row < kGridRows; ++row) {
    for (int column = kGridColumns / 2; column < kGridColumns; ++column) {
      points.push_back({column, row});
    }
  }
  return points;
}

Vec3 direction_of(const GridPoint& point) {
  return grid_direction(static_cast<float>(point.column) / static_cast<float>(kGridColumns - 1),
                        static_cast<float>(point.row) / static_cast<float>(kGridRows - 1));
}

// Makes the points of the head and what they need to be lit. Returns how far the hair stands out
// over the skin at each (see HeadShape).
std::vector<float> shape_head(const HeadShape& shape, Surface& head) {
  const std::size_t count = head.index(0, kGridRows);
  head.points.resize(count);
  head.normals.resize(count);
  head.openness.resize(count);
  std::vector<float> hair_cover(count);
  const std::vector<GridPoint> grid = right_half();
  for (std::size_t first = 0; first < grid.size(); first += 4) {
    const std::size_t lanes = std::min<std::size_t>(4, grid.size() - first);
    FourPoints directions;
    for (std::size_t i = 0; i < lanes; ++i) directions.set(i, direction_of(grid[first + i]));
    const FourPoints points = shape.surface_points(directions);
    const FourPoints normals = shape.normals(points);
    const FourFloats openness = shape.openness(points, normals);
    const FourFloats cover = shape.hair_cover(points);
    for (std::size_t i = 0; i < lanes; ++i) {
      const auto [column, row] = grid[first + i];
      const std::size_t right = head.index(column, row);
      const std::size_t left = head.index(kGridColumns - 1 - column, row);
      head.points[right] = points[i];
      head.points[left] = mirrored(points[i]);
      head.normals[right] = normals[i];
      head.normals[left] = mirrored(normals[i]);
      head.openness[left] = head.openness[right] = openness[i];
      hair_cover[left] = hair_cover[right] = cover[i];
    }
  }
  return hair_cover;
}

}  // namespace

Surface make_head(const HeadLook& look) {
  Surface head;
  head.columns = kGridColumns;
  head.rows = kGridRows;
  const std::vector<float> hair_cover = shape_head(HeadShape(look), head);
  head.gloss = 0.16F;
  const FacePaint face(look);
  paint(head, kTextureSize, [&](const Texels& texels) {
    std::vector<float> covers(texels.size());
    for (std::size_t i = 0; i < covers.size(); ++i) {
      covers[i] = interpolated(head, hair_cover, grid_place(texels.u[i], kGridColumns),
                               grid_place(texels.v[i], kGridRows));
    }
    return face.at(texels.points, covers);
  });
  return head;
}

}  // namespace halcyra::virtual_kinect::room
