// The curved surfaces that everything in the room is made of: grids of points with a texture.
#pragma once

#include <functional>
#include <vector>

#include <opencv2/core/mat.hpp>

#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// What a point of a surface gives back of the light that falls on it, 0 to 1 each.
struct Reflectance {
  Vec3 color;             // red, green, blue as displayed
  float infrared = 0.5F;  // of the sensor's own infrared light
};

struct Surface {
  int columns = 0;
  int rows = 0;
  // Row by row. Seen from outside, columns run to the right and rows down, for surfaces that are
  // open; closed ones repeat their first column as their last.
  std::vector<Vec3> points;
  std::vector<Vec3> normals;          // outward, of length 1
  std::vector<float> openness;        // 1: open to light from everywhere, 0: to none
  std::vector<cv::Mat> texture_mips;  // B, G, R, infrared; each half the size of the one before
  float gloss = 0.0F;                 // strength of the highlight
  float daylight_glow = 0.0F;         // light of its own, as bright as that source is
  float lamp_glow = 0.0F;

  std::size_t index(int column, int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
           static_cast<std::size_t>(column);
  }
};

// A surface from a formula; `point` takes u (columns) and v (rows) from 0 to 1. Normals follow from
// the points and openness is 1.
Surface make_surface(int columns, int rows, const std::function<Vec3(float u, float v)>& point);

// Recomputes the normals from the points. `closed`: the first column goes on from the last.
void update_normals(Surface& surface, bool closed);

// Between the values at the four grid points around a place; `values` has one for each point.
float interpolated(const Surface& surface, const std::vector<float>& values, float u, float v);
Vec3 interpolated(const Surface& surface, const std::vector<Vec3>& values, float u, float v);

// Fills in the texture: `reflectance` takes u, v and the point of the surface there.
void paint(Surface& surface, cv::Size size,
           const std::function<Reflectance(float u, float v, const Vec3& point)>& reflectance);

}  // namespace halcyra::virtual_kinect::room
