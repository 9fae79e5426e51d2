#include "virtual_kinect/room/shapes.hpp"

#include <algorithm>
#include <cmath>

namespace halcyra::virtual_kinect::room {

namespace {

float spline(float a, float b, float c, float d, float t) {
  return b + 0.5F * t *
                 (c - a + t * (2.0F * a - 5.0F * b + 4.0F * c - d + t * (3.0F * (b - c) + d - a)));
}

Ring ring_at(const std::vector<Ring>& rings, float v) {
  const int last = static_cast<int>(rings.size()) - 1;
  const float place = v * static_cast<float>(last);
  const int at = std::min(static_cast<int>(place), last - 1);
  const float t = place - static_cast<float>(at);
  const auto ring = [&](int i) { return rings[static_cast<std::size_t>(std::clamp(i, 0, last))]; };
  const Ring a = ring(at - 1);
  const Ring b = ring(at);
  const Ring c = ring(at + 1);
  const Ring d = ring(at + 2);
  return {{spline(a.center.x, b.center.x, c.center.x, d.center.x, t),
           spline(a.center.y, b.center.y, c.center.y, d.center.y, t),
           spline(a.center.z, b.center.z, c.center.z, d.center.z, t)},
          spline(a.half_width, b.half_width, c.half_width, d.half_width, t),
          spline(a.half_depth, b.half_depth, c.half_depth, d.half_depth, t)};
}

int grid_lines(float size, float step) {
  return std::clamp(static_cast<int>(size / step) + 2, 2, 200);
}

float signed_power(float base, float exponent) {
  return std::copysign(std::pow(std::fabs(base), exponent), base);
}

}  // namespace

Surface make_tube(const std::vector<Ring>& rings, int columns, int rows) {
  return make_surface(columns, rows, [&rings](float u, float v) {
    const Ring ring = ring_at(rings, v);
    const float azimuth = kPi * (2.0F * u - 1.0F);
    return ring.center +
           Vec3{ring.half_width * std::sin(azimuth), 0.0F, -ring.half_depth * std::cos(azimuth)};
  });
}

Surface make_sheet(const Vec3& corner, const Vec3& across, const Vec3& down, float grid_step) {
  return make_surface(grid_lines(length(across), grid_step), grid_lines(length(down), grid_step),
                      [&](float u, float v) { return corner + across * u + down * v; });
}

std::vector<Surface> make_box(const Vec3& least, const Vec3& most, float grid_step) {
  const Vec3 size = most - least;
  const Vec3 wide{size.x, 0.0F, 0.0F};
  const Vec3 high{0.0F, size.y, 0.0F};
  const Vec3 deep{0.0F, 0.0F, size.z};
  std::vector<Surface> faces = {make_sheet(least, wide, high, grid_step)};
  if (least.y > 0.0F) faces.push_back(make_sheet(least + deep, wide, deep * -1.0F, grid_step));
  if (most.y < 0.0F) faces.push_back(make_sheet(least + high, wide, deep, grid_step));
  if (least.x > 0.0F) faces.push_back(make_sheet(least + deep, deep * -1.0F, high, grid_step));
  if (most.x < 0.0F) faces.push_back(make_sheet(least + wide, deep, high, grid_step));
  return faces;
}

Surface make_cushion(const Vec3& center, const Vec3& half_sizes) {
  constexpr float kRoundness = 0.35F;
  return make_surface(41, 21, [&](float u, float v) {
    const float azimuth = kPi * (2.0F * u - 1.0F);
    const float polar = kPi * v;
    const float around = signed_power(std::sin(polar), kRoundness);
    const Vec3 unit{around * signed_power(std::sin(azimuth), kRoundness),
                    -signed_power(std::cos(polar), kRoundness),
                    -around * signed_power(std::cos(azimuth), kRoundness)};
    return center + multiply(unit, half_sizes);
  });
}

Surface reversed(const Surface& surface) {
  Surface back = surface;
  for (int row = 0; row < surface.rows; ++row) {
    for (int column = 0; column < surface.columns; ++column) {
      const std::size_t from = surface.index(surface.columns - 1 - column, row);
      const std::size_t to = surface.index(column, row);
      back.points[to] = surface.points[from];
      back.normals[to] = surface.normals[from] * -1.0F;
      back.openness[to] = surface.openness[from];
    }
  }
  return back;
}

}  // namespace halcyra::virtual_kinect::room
