#include "virtual_kinect/room/surface.hpp"

#include <algorithm>

#include <opencv2/imgproc.hpp>

namespace halcyra::virtual_kinect::room {

namespace {

constexpr int kLeastMipSide = 8;

uchar to_byte(float share) { return static_cast<uchar>(255.0F * clamp01(share) + 0.5F); }

float fraction(int index, int count) {
  return static_cast<float>(index) / static_cast<float>(count - 1);
}

template <typename Value>
Value between(const Surface& surface, const std::vector<Value>& values, float u, float v) {
  const float column = u * static_cast<float>(surface.columns - 1);
  const float row = v * static_cast<float>(surface.rows - 1);
  const int left = std::min(static_cast<int>(column), surface.columns - 2);
  const int top = std::min(static_cast<int>(row), surface.rows - 2);
  const float s = column - static_cast<float>(left);
  const float t = row - static_cast<float>(top);
  const Value* p = &values[surface.index(left, top)];
  const Value* q = p + surface.columns;
  return mix(mix(p[0], p[1], s), mix(q[0], q[1], s), t);
}

}  // namespace

Surface make_surface(int columns, int rows, const std::function<Vec3(float u, float v)>& point) {
  Surface surface;
  surface.columns = columns;
  surface.rows = rows;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      surface.points.push_back(point(fraction(column, columns), fraction(row, rows)));
    }
  }
  surface.openness.assign(surface.points.size(), 1.0F);
  const Vec3 seam = surface.points[surface.index(0, rows / 2)] -
                    surface.points[surface.index(columns - 1, rows / 2)];
  update_normals(surface, length(seam) < 1e-3F);
  return surface;
}

void update_normals(Surface& surface, bool closed) {
  const int last_column = surface.columns - 1;
  const int last_row = surface.rows - 1;
  surface.normals.resize(surface.points.size());
  for (int row = 0; row <= last_row; ++row) {
    for (int column = 0; column <= last_column; ++column) {
      const int before = column > 0 ? column - 1 : (closed ? last_column - 1 : 0);
      const int after = column < last_column ? column + 1 : (closed ? 1 : last_column);
      const Vec3 along =
          surface.points[surface.index(after, row)] - surface.points[surface.index(before, row)];
      const Vec3 down = surface.points[surface.index(column, std::min(row + 1, last_row))] -
                        surface.points[surface.index(column, std::max(row - 1, 0))];
      surface.normals[surface.index(column, row)] = normalized(cross(down, along));
    }
  }
}

float interpolated(const Surface& surface, const std::vector<float>& values, float u, float v) {
  return between(surface, values, u, v);
}

Vec3 interpolated(const Surface& surface, const std::vector<Vec3>& values, float u, float v) {
  return between(surface, values, u, v);
}

void paint(Surface& surface, cv::Size size,
           const std::function<Reflectance(float u, float v, const Vec3& point)>& reflectance) {
  cv::Mat texture(size, CV_8UC4);
  for (int row = 0; row < size.height; ++row) {
    const float v = (static_cast<float>(row) + 0.5F) / static_cast<float>(size.height);
    for (int column = 0; column < size.width; ++column) {
      const float u = (static_cast<float>(column) + 0.5F) / static_cast<float>(size.width);
      const Reflectance r = reflectance(u, v, interpolated(surface, surface.points, u, v));
      texture.at<cv::Vec4b>(row, column) = cv::Vec4b(to_byte(r.color.z), to_byte(r.color.y),
                                                     to_byte(r.color.x), to_byte(r.infrared));
    }
  }
  surface.texture_mips = {texture};
  while (std::min(texture.rows, texture.cols) >= 2 * kLeastMipSide) {
    cv::Mat half;
    cv::resize(texture, half, {texture.cols / 2, texture.rows / 2}, 0, 0, cv::INTER_AREA);
    surface.texture_mips.push_back(half);
    texture = half;
  }
}

}  // namespace halcyra::virtual_kinect::room
