#include "virtual_kinect/room/head_model.hpp"

#include <cmath>
#include <vector>

#include "virtual_kinect/room/face_paint.hpp"
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

}  // namespace

Surface make_head(const HeadLook& look) {
  const HeadShape shape(look);
  Surface head;
  head.columns = kGridColumns;
  head.rows = kGridRows;
  const std::size_t count = head.index(0, kGridRows);
  head.points.resize(count);
  head.normals.resize(count);
  head.openness.resize(count);
  std::vector<float> hair_cover(count);
  for (int row = 0; row < kGridRows; ++row) {
    for (int column = kGridColumns / 2; column < kGridColumns; ++column) {
      const float u = static_cast<float>(column) / static_cast<float>(kGridColumns - 1);
      const float v = static_cast<float>(row) / static_cast<float>(kGridRows - 1);
      const std::size_t right = head.index(column, row);
      const std::size_t left = head.index(kGridColumns - 1 - column, row);
      const Vec3 p = shape.surface_point(grid_direction(u, v));
      const Vec3 n = shape.normal(p);
      head.points[right] = p;
      head.normals[right] = n;
      head.points[left] = mirrored(p);
      head.normals[left] = mirrored(n);
      head.openness[right] = head.openness[left] = shape.openness(p, n);
      hair_cover[left] = hair_cover[right] = shape.hair_cover(p);
    }
  }
  head.gloss = 0.16F;
  const FacePaint face(look);
  paint(head, kTextureSize, [&](float u, float v, const Vec3& p) {
    return face.at(p, interpolated(head, hair_cover, u, v));
  });
  return head;
}

}  // namespace halcyra::virtual_kinect::room
