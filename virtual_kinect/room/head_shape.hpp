// The shape of a head, as the distance of any point from its surface.
#pragma once

#include <vector>

#include "virtual_kinect/room/looks.hpp"
#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// In head coordinates: millimetres from the point between the ears at the height of the eyes. The
// face looks to -z; y points down.
class HeadShape {
 public:
  explicit HeadShape(const HeadLook& look);

  // Millimetres from skin or hair, negative inside; exact only near the surface.
  float distance(const Vec3& p) const;
  // How far the hair stands out over the skin, in millimetres; below 0 where there is none.
  float hair_cover(const Vec3& p) const;
  // The outermost point of the surface in a direction (of length 1) from the origin.
  Vec3 surface_point(const Vec3& direction) const;
  // Outward, of length 1, at a point of the surface.
  Vec3 normal(const Vec3& p) const;
  // How open a point of the surface is to light from all around: 0.25 in a deep fold, 1 on a bulge.
  float openness(const Vec3& p, const Vec3& normal) const;

 private:
  struct Ellipsoid {
    Vec3 center;
    Vec3 radii;
    float blend;  // millimetres over which it blends into the parts before it
  };

  void add_flesh(const HeadLook& look);
  void add_hair(const HeadLook& look);
  float skin_distance(const Vec3& p) const;
  float hair_distance(const Vec3& p) const;
  static float distance(const Ellipsoid& ellipsoid, const Vec3& p);

  // The half with x >= 0; the other mirrors it.
  std::vector<Ellipsoid> flesh_;
  std::vector<Ellipsoid> hollows_;
  std::vector<Ellipsoid> details_;  // added after the hollows have been carved out
  std::vector<Ellipsoid> hair_;
  Vec3 stretch_;
};

}  // namespace halcyra::virtual_kinect::room
