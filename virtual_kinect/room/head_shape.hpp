// The shape of a head, as the distance of any point from its surface.
#pragma once

#include <vector>

#include "virtual_kinect/room/looks.hpp"
#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// Head coordinates: the origin lies between the ears at the height of the eyes; the face looks to
// -z, y points down.
class HeadShape {
 public:
  explicit HeadShape(const HeadLook& look);

  // Negative inside; exact only near the surface.
  float distance(const Vec3& p) const;
  // Above 0 where hair lies over the skin; millimetres.
  float hair_cover(const Vec3& p) const;
  // The surface seen from the origin in a direction.
  Vec3 surface_point(const Vec3& direction) const;
  Vec3 normal(const Vec3& p) const;
  // How much of the surroundings a point of the surface sees, 0 to 1.
  float openness(const Vec3& p, const Vec3& normal) const;

 private:
  struct Ellipsoid {
    Vec3 center;
    Vec3 radii;
    float blend;  // millimetres over which it melts into what comes before it
  };

  void add_flesh(const HeadLook& look);
  void add_hair(const HeadLook& look);
  float skin_distance(const Vec3& p) const;
  float hair_distance(const Vec3& p) const;
  static float distance(const Ellipsoid& ellipsoid, const Vec3& p);

  // The right half (x >= 0); the left mirrors it.
  std::vector<Ellipsoid> flesh_;
  std::vector<Ellipsoid> hollows_;
  std::vector<Ellipsoid> details_;  // added after the hollows were taken away
  std::vector<Ellipsoid> hair_;
  Vec3 stretch_;
};

}  // namespace halcyra::virtual_kinect::room
