#include "virtual_kinect/room/coat.hpp"

#include <algorithm>

#include <opencv2/core/mat.hpp>
#include <opencv2/imgproc.hpp>

#include "virtual_kinect/room/four_floats.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr int kLeastMipSide = 8;
constexpr int kTexelsAtOnce = 1024;

FourFloats four(const Vec3& p) { return FourFloats{p.x, p.y, p.z, 0.0F}; }

// The middle of a texel among `count`.
float middle(int number, int count) {
  return (static_cast<float>(number) + 0.5F) / static_cast<float>(count);
}

// The columns of a texture.
struct Columns {
  std::vector<float> u;
  std::vector<GridPlace> places;
};

Columns columns_of(const Surface& surface, int count) {
  Columns columns;
  for (int column = 0; column < count; ++column) {
    columns.u.push_back(middle(column, count));
    columns.places.push_back(grid_place(columns.u.back(), surface.columns));
  }
  return columns;
}

// Appends one row of the texture.
void add_row(const Surface& surface, const Columns& columns, float v, Texels& texels) {
  const GridPlace row = grid_place(v, surface.rows);
  const Vec3* const upper = &surface.points[surface.index(0, row.first)];
  const Vec3* const lower = upper + surface.columns;
  const std::size_t start = texels.size();
  const std::size_t end = start + columns.u.size();
  texels.u.insert(texels.u.end(), columns.u.begin(), columns.u.end());
  texels.v.resize(end, v);
  texels.points.x.resize(end);
  texels.points.y.resize(end);
  texels.points.z.resize(end);
  for (std::size_t i = start; i < end; ++i) {
    const auto [first, share] = columns.places[i - start];
    // As interpolated() does it, all coordinates at once.
    const FourFloats p = mix(mix(four(upper[first]), four(upper[first + 1]), share),
                             mix(four(lower[first]), four(lower[first + 1]), share), row.share);
    texels.points.x[i] = p[0];
    texels.points.y[i] = p[1];
    texels.points.z[i] = p[2];
  }
}

cv::Vec4b to_bytes(const Reflectance& r) {
  const FourFloats shares{r.color.z, r.color.y, r.color.x, r.infrared};
  const FourFloats above_zero = shares > 0.0F ? shares : FourFloats{};
  const FourFloats kept = above_zero < 1.0F ? above_zero : FourFloats{} + 1.0F;
  const FourInts levels = __builtin_convertvector(255.0F * kept + 0.5F, FourInts);
  cv::Vec4b bytes;
  for (int i = 0; i < 4; ++i) bytes[i] = static_cast<uchar>(levels[i]);
  return bytes;
}

void store(const std::vector<Reflectance>& painted, cv::Mat rows) {
  auto* texel = rows.ptr<cv::Vec4b>();
  for (const Reflectance& r : painted) *texel++ = to_bytes(r);
}

}  // namespace

Coat even_coat(const Reflectance& reflectance) {
  return [reflectance](const Texels& texels) {
    return std::vector<Reflectance>(texels.size(), reflectance);
  };
}

void paint(Surface& surface, cv::Size size, const Coat& coat) {
  cv::Mat texture(size, CV_8UC4);
  const Columns columns = columns_of(surface, size.width);
  const int rows_at_once = std::max(1, kTexelsAtOnce / size.width);
  for (int first = 0; first < size.height; first += rows_at_once) {
    const int end = std::min(first + rows_at_once, size.height);
    Texels texels;
    for (int row = first; row < end; ++row) {
      add_row(surface, columns, middle(row, size.height), texels);
    }
    store(coat(texels), texture.rowRange(first, end));
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
