#include "virtual_kinect/room/canvas.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "virtual_kinect/room/raster.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kNearestDepth = 200.0F;  // millimetres; what comes closer is not drawn

// Places in Corner::values. The pictures of both cameras begin with the nearness.
enum ColorValue : std::size_t { kNearness, kTextureX, kTextureY, kBlue, kGreen, kRed, kShine };
enum DepthValue : std::size_t { kEcho = kNearness + 1 };

// A point in the middle of the grid and the distances to its neighbours in millimetres. Every grid
// has at least two columns and two rows.
struct GridMiddle {
  const Vec3& point;
  float to_the_right;
  float to_below;
};

GridMiddle middle_of(const Surface& surface) {
  const std::size_t at = surface.index((surface.columns - 1) / 2, (surface.rows - 1) / 2);
  const Vec3& point = surface.points[at];
  const auto next_row = static_cast<std::size_t>(surface.columns);
  return {point, length(surface.points[at + 1] - point),
          length(surface.points[at + next_row] - point)};
}

// The mip whose texels are about as large as the picture's pixels.
const cv::Mat& fitting_mip(const Surface& surface, const Pinhole& camera, const Pose& pose) {
  const GridMiddle middle = middle_of(surface);
  const cv::Mat& full = surface.texture_mips.front();
  const float depth = std::max(pose.place(middle.point).z, kNearestDepth);
  const float wide =
      middle.to_the_right * static_cast<float>(surface.columns) / static_cast<float>(full.cols);
  const float high =
      middle.to_below * static_cast<float>(surface.rows) / static_cast<float>(full.rows);
  float texel = std::max(std::min(wide, high), 1e-3F);
  std::size_t mip = 0;
  const float pixel = depth / camera.focal;
  while (texel * 1.5F < pixel && mip + 1 < surface.texture_mips.size()) {
    texel *= 2.0F;
    ++mip;
  }
  return surface.texture_mips[mip];
}

struct Texel {
  int values[3];  // blue, green and red, each times 256
};

// Between the four texels around a place, which is computed in 24.8 fixed-point numbers.
Texel sample(const cv::Mat& texture, float x, float y) {
  const int fixed_x = std::clamp(static_cast<int>(x * 256.0F) - 128, 0, (texture.cols << 8) - 513);
  const int fixed_y = std::clamp(static_cast<int>(y * 256.0F) - 128, 0, (texture.rows << 8) - 513);
  const int s = fixed_x & 255;
  const int t = fixed_y & 255;
  const uchar* p = texture.ptr(fixed_y >> 8) + 4 * (fixed_x >> 8);
  const uchar* q = p + texture.step[0];
  const int w11 = s * t >> 8;
  const int w10 = s - w11;
  const int w01 = t - w11;
  const int w00 = 256 - s - w01;
  Texel texel;
  for (int i = 0; i < 3; ++i) {
    texel.values[i] = p[i] * w00 + p[i + 4] * w10 + q[i] * w01 + q[i + 4] * w11;
  }
  return texel;
}

// Bends what is brighter than the display can show into its last 40 levels.
constexpr std::array<uchar, 1024> make_exposure_table() {
  std::array<uchar, 1024> table{};
  for (std::size_t i = 0; i < table.size(); ++i) {
    const float value = static_cast<float>(i);
    const float knee = 215.0F;
    const float over = std::max(value - knee, 0.0F);
    table[i] = static_cast<uchar>(std::min(value, knee) + over * 40.0F / (40.0F + over));
  }
  return table;
}

constexpr std::array<uchar, 1024> kExposureTable = make_exposure_table();

uchar exposed(float value) {
  return kExposureTable[static_cast<std::size_t>(std::clamp(static_cast<int>(value), 0, 1023))];
}

Corner project(const Pinhole& camera, const Vec3& point) {
  Corner corner;
  if (point.z >= kNearestDepth) {
    corner.x = camera.column(point);
    corner.y = camera.row(point);
    corner.values[kNearness] = 1.0F / point.z;
  }
  return corner;
}

bool drawable(const Corner& corner) { return corner.values[kNearness] > 0.0F; }

// How many grid points lie between the corners of a triangle: 1, 2 or 4. With every point a corner,
// the triangles of far surfaces would be smaller than pixels.
int fitting_stride(const Surface& surface, const Pinhole& camera, const Pose& pose) {
  const GridMiddle middle = middle_of(surface);
  const float gap = std::max(middle.to_the_right, middle.to_below);
  const float pixels = gap * camera.focal / std::max(pose.place(middle.point).z, kNearestDepth);
  int stride = 1;
  while (stride < 4 && pixels * static_cast<float>(stride) < 1.0F &&
         (surface.columns - 1) % (2 * stride) == 0 && (surface.rows - 1) % (2 * stride) == 0) {
    stride *= 2;
  }
  return stride;
}

template <typename Plot>
void fill_grid(const Surface& surface, int stride, const std::vector<Corner>& corners,
               const cv::Rect& bounds, const Plot& plot) {
  for (int row = 0; row + stride < surface.rows; row += stride) {
    for (int column = 0; column + stride < surface.columns; column += stride) {
      const Corner* upper = &corners[surface.index(column, row)];
      const Corner* lower = upper + stride * surface.columns;
      if (drawable(upper[0]) && drawable(upper[stride]) && drawable(lower[0]) &&
          drawable(lower[stride])) {
        fill_triangle(upper[0], upper[stride], lower[stride], bounds, plot);
        fill_triangle(upper[0], lower[stride], lower[0], bounds, plot);
      }
    }
  }
}

std::vector<Corner> lit_corners(const Pinhole& camera, const Surface& surface, const Pose& pose,
                                const LightLevels& levels, float wrap, int stride,
                                const cv::Size& texture) {
  std::vector<Corner> corners(surface.points.size());
  for (int row = 0; row < surface.rows; row += stride) {
    for (int column = 0; column < surface.columns; column += stride) {
      const std::size_t i = surface.index(column, row);
      const Vec3 point = pose.place(surface.points[i]);
      Corner& corner = corners[i] = project(camera, point);
      const Vec3 normal = pose.turn(surface.normals[i]);
      if (!drawable(corner) || dot(normal, point) > 0.6F * point.z) {
        continue;  // seen from behind, with some margin for its neighbours
      }
      const float glow = surface.daylight_glow * levels.daylight + surface.lamp_glow * levels.lamp;
      const Vec3 shade = combined(shade_parts(point, normal, surface.openness[i], wrap), levels) +
                         Vec3{glow, glow, glow};
      corner.values[kTextureX] =
          static_cast<float>(column * texture.width) / static_cast<float>(surface.columns - 1);
      corner.values[kTextureY] =
          static_cast<float>(row * texture.height) / static_cast<float>(surface.rows - 1);
      corner.values[kBlue] = shade.z / 256.0F;
      corner.values[kGreen] = shade.y / 256.0F;
      corner.values[kRed] = shade.x / 256.0F;
      corner.values[kShine] =
          255.0F * surface.gloss * levels.daylight * surface.openness[i] * highlight(point, normal);
    }
  }
  return corners;
}

}  // namespace

void draw(const ColorCanvas& canvas, const Surface& surface, const Pose& pose,
          const LightLevels& levels, float wrap) {
  const cv::Mat& texture = fitting_mip(surface, canvas.camera, pose);
  const int stride = fitting_stride(surface, canvas.camera, pose);
  const std::vector<Corner> corners =
      lit_corners(canvas.camera, surface, pose, levels, wrap, stride, texture.size());
  cv::Mat color = canvas.color;
  cv::Mat nearest = canvas.nearness;
  fill_grid(surface, stride, corners, cv::Rect({}, color.size()),
            [&](int column, int row, const std::array<float, 8>& values) {
              float& nearest_yet = nearest.ptr<float>(row)[column];
              if (values[kNearness] <= nearest_yet) return;
              nearest_yet = values[kNearness];
              const Texel texel = sample(texture, values[kTextureX], values[kTextureY]);
              uchar* pixel = color.ptr(row, column);
              for (std::size_t i = 0; i < 3; ++i) {
                pixel[i] = exposed(static_cast<float>(texel.values[i]) * values[kBlue + i] +
                                   values[kShine]);
              }
            });
}

void draw(const DepthCanvas& canvas, const Surface& surface, const Pose& pose) {
  const cv::Mat& texture = fitting_mip(surface, canvas.camera, pose);
  const int stride = fitting_stride(surface, canvas.camera, pose);
  std::vector<Corner> corners(surface.points.size());
  for (int row = 0; row < surface.rows; row += stride) {
    for (int column = 0; column < surface.columns; column += stride) {
      const std::size_t i = surface.index(column, row);
      const Vec3 point = pose.place(surface.points[i]);
      corners[i] = project(canvas.camera, point);
      const float cosine = -dot(pose.turn(surface.normals[i]), normalized(point));
      const cv::Vec4b& texel =
          texture.at<cv::Vec4b>(row * (texture.rows - 1) / (surface.rows - 1),
                                column * (texture.cols - 1) / (surface.columns - 1));
      corners[i].values[kEcho] = std::max(cosine, 0.05F) * static_cast<float>(texel[3]) / 255.0F;
    }
  }
  cv::Mat nearest = canvas.nearness;
  cv::Mat echo = canvas.echo;
  fill_grid(surface, stride, corners, cv::Rect({}, nearest.size()),
            [&](int column, int row, const std::array<float, 8>& values) {
              float& nearest_yet = nearest.ptr<float>(row)[column];
              if (values[kNearness] > nearest_yet) {
                nearest_yet = values[kNearness];
                echo.ptr<float>(row)[column] = values[kEcho];
              }
            });
}

cv::Rect extent(const Pinhole& camera, const Surface& surface, const Pose& pose) {
  const cv::Rect picture(0, 0, camera.width, camera.height);
  float left = 1e9F;
  float right = -1e9F;
  float top = 1e9F;
  float bottom = -1e9F;
  for (const Vec3& local : surface.points) {
    const Corner corner = project(camera, pose.place(local));
    if (drawable(corner)) {
      left = std::min(left, corner.x);
      right = std::max(right, corner.x);
      top = std::min(top, corner.y);
      bottom = std::max(bottom, corner.y);
    }
  }
  if (left > right || right < 0.0F || bottom < 0.0F || left > static_cast<float>(camera.width) ||
      top > static_cast<float>(camera.height)) {
    return {};
  }
  const int x = static_cast<int>(std::floor(std::max(left, 0.0F)));
  const int y = static_cast<int>(std::floor(std::max(top, 0.0F)));
  const int x_end = static_cast<int>(std::ceil(std::min(right, 1e5F)));
  const int y_end = static_cast<int>(std::ceil(std::min(bottom, 1e5F)));
  return cv::Rect(x, y, x_end - x, y_end - y) & picture;
}

}  // namespace halcyra::virtual_kinect::room
