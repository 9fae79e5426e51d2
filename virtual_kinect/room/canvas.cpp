#include "virtual_kinect/room/canvas.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "virtual_kinect/room/four_floats.hpp"
#include "virtual_kinect/room/raster.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kNearestDepth = 200.0F;  // millimetres; what comes closer is not drawn

// The first four of Corner::values, for the colour camera and for the depth camera.
constexpr std::size_t kNearness = 0;
constexpr std::size_t kTextureX = 1;
constexpr std::size_t kTextureY = 2;
constexpr std::size_t kShine = 3;
constexpr std::size_t kEcho = 1;
// The fours after those of the colour camera: blue, green and red light, under all sources together
// or under each alone.
constexpr std::size_t kLight = 1;
constexpr std::size_t kDaylight = 1;
constexpr std::size_t kLamp = 2;

using FourShorts = std::uint16_t __attribute__((vector_size(8)));

using ColorCorner = Corner<kLight + 1>;
using TwoLightsCorner = Corner<kLamp + 1>;
using DepthCorner = Corner<1>;

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

// Where to read texels; the largest places are those of sample(), times 256. Unlike a cv::Mat, it
// does not have to be read anew after each pixel.
struct Texture {
  explicit Texture(const cv::Mat& texels)
      : data(texels.data),
        step(static_cast<std::ptrdiff_t>(texels.step[0])),
        most_x((texels.cols << 8) - 513),
        most_y((texels.rows << 8) - 513) {}

  const uchar* data;
  std::ptrdiff_t step;
  int most_x;
  int most_y;
};

// The four bytes of a texel, each in 16 bits: the first, the third, the second, the fourth.
std::uint64_t spread(const uchar* texel) {
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, texel, sizeof(bytes));
  const std::uint64_t wide = bytes;
  return (wide | wide << 24U) & 0x00FF00FF00FF00FFU;
}

// Between the four texels around a place, which is computed in 24.8 fixed-point numbers. Blue,
// green, red and infrared, each times 256.
inline FourFloats sample(const Texture& texture, float x, float y) {
  const int fixed_x = std::clamp(static_cast<int>(x * 256.0F) - 128, 0, texture.most_x);
  const int fixed_y = std::clamp(static_cast<int>(y * 256.0F) - 128, 0, texture.most_y);
  const auto s = static_cast<std::uint64_t>(fixed_x & 255);
  const auto t = static_cast<std::uint64_t>(fixed_y & 255);
  const uchar* p = texture.data + (fixed_y >> 8) * texture.step + 4 * (fixed_x >> 8);
  const uchar* q = p + texture.step;
  const std::uint64_t w11 = s * t >> 8U;
  const std::uint64_t w10 = s - w11;
  const std::uint64_t w01 = t - w11;
  const std::uint64_t w00 = 256U - s - w01;
  // The weights add up to 256, so no sum needs more than its 16 bits.
  const std::uint64_t sums =
      spread(p) * w00 + spread(p + 4) * w10 + spread(q) * w01 + spread(q + 4) * w11;
  FourShorts spread_channels;
  std::memcpy(&spread_channels, &sums, sizeof(sums));
  const FourShorts channels = __builtin_shufflevector(spread_channels, spread_channels, 0, 2, 1, 3);
  return __builtin_convertvector(__builtin_convertvector(channels, FourInts), FourFloats);
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

inline void expose(FourFloats colors, uchar* pixel) {
  constexpr float kMost = kExposureTable.size() - 1;
  const FourFloats above_zero = colors > 0.0F ? colors : FourFloats{};
  const FourFloats levels = above_zero < kMost ? above_zero : FourFloats{} + kMost;
  const FourInts indices = __builtin_convertvector(levels, FourInts);
  for (std::size_t i = 0; i < 3; ++i) {
    pixel[i] = kExposureTable[static_cast<std::size_t>(indices[i])];
  }
}

// The corner has no values but its nearness; 0 where it is not drawn.
template <typename AnyCorner>
AnyCorner project(const Pinhole& camera, const Vec3& point) {
  AnyCorner corner;
  if (point.z >= kNearestDepth) {
    corner.x = camera.column(point);
    corner.y = camera.row(point);
    corner.values[0][kNearness] = 1.0F / point.z;
  }
  return corner;
}

template <typename AnyCorner>
bool drawable(const AnyCorner& corner) {
  return corner.values[0][kNearness] > 0.0F;
}

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

template <typename AnyCorner, typename Plot>
void fill_grid(const Surface& surface, int stride, const std::vector<AnyCorner>& corners,
               const cv::Rect& bounds, const Plot& plot) {
  for (int row = 0; row + stride < surface.rows; row += stride) {
    for (int column = 0; column + stride < surface.columns; column += stride) {
      const AnyCorner* upper = &corners[surface.index(column, row)];
      const AnyCorner* lower = upper + stride * surface.columns;
      if (drawable(upper[0]) && drawable(upper[stride]) && drawable(lower[0]) &&
          drawable(lower[stride])) {
        fill_triangle(upper[0], upper[stride], lower[stride], bounds, plot);
        fill_triangle(upper[0], lower[stride], lower[0], bounds, plot);
      }
    }
  }
}

// How a surface is drawn by the colour camera.
struct ColorPlan {
  const cv::Mat& texture;
  int stride;
};

ColorPlan color_plan(const Surface& surface, const Pinhole& camera, const Pose& pose) {
  return {fitting_mip(surface, camera, pose), fitting_stride(surface, camera, pose)};
}

// The corners of a surface in a colour picture. light(corner, point, normal, openness) adds the
// light to those that the camera may see.
template <typename AnyCorner, typename Light>
std::vector<AnyCorner> lit_corners(const Pinhole& camera, const Surface& surface, const Pose& pose,
                                   const ColorPlan& plan, const Light& light) {
  std::vector<AnyCorner> corners(surface.points.size());
  for (int row = 0; row < surface.rows; row += plan.stride) {
    for (int column = 0; column < surface.columns; column += plan.stride) {
      const std::size_t i = surface.index(column, row);
      const Vec3 point = pose.place(surface.points[i]);
      AnyCorner& corner = corners[i] = project<AnyCorner>(camera, point);
      const Vec3 normal = pose.turn(surface.normals[i]);
      if (!drawable(corner) || dot(normal, point) > 0.6F * point.z) {
        continue;  // seen from behind, with some margin for its neighbours
      }
      FourFloats& values = corner.values[0];
      values[kTextureX] =
          static_cast<float>(column * plan.texture.cols) / static_cast<float>(surface.columns - 1);
      values[kTextureY] =
          static_cast<float>(row * plan.texture.rows) / static_cast<float>(surface.rows - 1);
      light(corner, point, normal, surface.openness[i]);
    }
  }
  return corners;
}

// As much light as sample() needs to give levels from 0 to 255.
FourFloats light_values(const ShadeParts& parts, const LightLevels& levels,
                        const Surface& surface) {
  const float glow = surface.daylight_glow * levels.daylight + surface.lamp_glow * levels.lamp;
  const Vec3 shade = combined(parts, levels) + Vec3{glow, glow, glow};
  return FourFloats{shade.z, shade.y, shade.x, 0.0F} / 256.0F;
}

float shine(const Surface& surface, const LightLevels& levels, const Vec3& point,
            const Vec3& normal, float openness) {
  if (surface.gloss == 0.0F) return 0.0F;
  return 255.0F * surface.gloss * levels.daylight * openness * highlight(point, normal);
}

// Where to write, row by row. Unlike a cv::Mat, it does not have to be read anew after each pixel.
template <typename Pixel>
class Rows {
 public:
  Rows(const cv::Mat& picture, int first_row)
      : data_(picture.data), step_(picture.step[0]), first_row_(first_row) {}
  Pixel* pixel(int column, int row) const {
    return reinterpret_cast<Pixel*>(data_ + static_cast<std::size_t>(row - first_row_) * step_) +
           column * kChannels;
  }

 private:
  static constexpr int kChannels = sizeof(Pixel) == 1 ? 4 : 1;
  uchar* data_;
  std::size_t step_;
  int first_row_;
};

}  // namespace

void draw(const ColorCanvas& canvas, const Surface& surface, const Pose& pose,
          const LightLevels& levels, float wrap) {
  const ColorPlan plan = color_plan(surface, canvas.camera, pose);
  const std::vector<ColorCorner> corners = lit_corners<ColorCorner>(
      canvas.camera, surface, pose, plan,
      [&](ColorCorner& corner, const Vec3& point, const Vec3& normal, float openness) {
        const ShadeParts parts = shade_parts(point, normal, openness, wrap);
        corner.values[kLight] = light_values(parts, levels, surface);
        corner.values[0][kShine] = shine(surface, levels, point, normal, openness);
      });
  const Texture texture(plan.texture);
  const Rows<uchar> color(canvas.color, 0);
  const Rows<float> nearest(canvas.nearness, 0);
  fill_grid(surface, plan.stride, corners, cv::Rect({}, canvas.color.size()),
            [=](int column, int row, const Values<kLight + 1>& values) {
              float& nearest_yet = *nearest.pixel(column, row);
              if (values[0][kNearness] <= nearest_yet) return;
              nearest_yet = values[0][kNearness];
              const FourFloats texel = sample(texture, values[0][kTextureX], values[0][kTextureY]);
              expose(texel * values[kLight] + values[0][kShine], color.pixel(column, row));
            });
}

void draw(const TwoLightsCanvas& canvas, const Surface& surface, const Pose& pose) {
  constexpr LightLevels kDayAlone{1.0F, 0.0F};
  constexpr LightLevels kLampAlone{0.0F, 1.0F};
  const ColorPlan plan = color_plan(surface, canvas.camera, pose);
  const std::vector<TwoLightsCorner> corners = lit_corners<TwoLightsCorner>(
      canvas.camera, surface, pose, plan,
      [&](TwoLightsCorner& corner, const Vec3& point, const Vec3& normal, float openness) {
        const ShadeParts parts = shade_parts(point, normal, openness, 0.0F);
        corner.values[kDaylight] = light_values(parts, kDayAlone, surface);
        corner.values[kLamp] = light_values(parts, kLampAlone, surface);
        corner.values[0][kShine] = shine(surface, kDayAlone, point, normal, openness);
      });
  const Texture texture(plan.texture);
  const Rows<uchar> daylight(canvas.daylight, canvas.first_row);
  const Rows<uchar> lamp(canvas.lamp, canvas.first_row);
  const Rows<float> nearest(canvas.nearness, canvas.first_row);
  fill_grid(surface, plan.stride, corners, cv::Rect({0, canvas.first_row}, canvas.nearness.size()),
            [=](int column, int row, const Values<kLamp + 1>& values) {
              float& nearest_yet = *nearest.pixel(column, row);
              if (values[0][kNearness] <= nearest_yet) return;
              nearest_yet = values[0][kNearness];
              const FourFloats texel = sample(texture, values[0][kTextureX], values[0][kTextureY]);
              expose(texel * values[kDaylight] + values[0][kShine], daylight.pixel(column, row));
              expose(texel * values[kLamp], lamp.pixel(column, row));
            });
}

void draw(const DepthCanvas& canvas, const Surface& surface, const Pose& pose) {
  const cv::Mat& texture = fitting_mip(surface, canvas.camera, pose);
  const int stride = fitting_stride(surface, canvas.camera, pose);
  std::vector<DepthCorner> corners(surface.points.size());
  for (int row = 0; row < surface.rows; row += stride) {
    for (int column = 0; column < surface.columns; column += stride) {
      const std::size_t i = surface.index(column, row);
      const Vec3 point = pose.place(surface.points[i]);
      corners[i] = project<DepthCorner>(canvas.camera, point);
      const float cosine = -dot(pose.turn(surface.normals[i]), normalized(point));
      const cv::Vec4b& texel =
          texture.at<cv::Vec4b>(row * (texture.rows - 1) / (surface.rows - 1),
                                column * (texture.cols - 1) / (surface.columns - 1));
      corners[i].values[0][kEcho] = std::max(cosine, 0.05F) * static_cast<float>(texel[3]) / 255.0F;
    }
  }
  const Rows<float> nearest(canvas.nearness, 0);
  const Rows<float> echo(canvas.echo, 0);
  fill_grid(surface, stride, corners, cv::Rect({}, canvas.nearness.size()),
            [=](int column, int row, const Values<1>& values) {
              float& nearest_yet = *nearest.pixel(column, row);
              if (values[0][kNearness] > nearest_yet) {
                nearest_yet = values[0][kNearness];
                *echo.pixel(column, row) = values[0][kEcho];
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
    const DepthCorner corner = project<DepthCorner>(camera, pose.place(local));
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
