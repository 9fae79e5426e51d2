#include "virtual_kinect/room/surface.hpp"

#include <algorithm>

namespace halcyra::virtual_kinect::room {

namespace {

float fraction(int index, int count) {
  return static_cast<float>(index) / static_cast<float>(count - 1);
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

GridPlace grid_place(float along, int count) {
  const float place = along * static_cast<float>(count - 1);
  const int first = std::min(static_cast<int>(place), count - 2);
  return {first, place - static_cast<float>(first)};
}

}  // namespace halcyra::virtual_kinect::room
