// The shape of a head, as the distance of any point from its surface.
#pragma once

#include <vector>

#include "virtual_kinect/room/four_floats.hpp"
#include "virtual_kinect/room/looks.hpp"
#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// In head coordinates: millimetres from the point between the ears at the height of the eyes. The
// face looks to -z; y points down.
class HeadShape {
 public:
  explicit HeadShape(const HeadLook& look);

  // All of these do four points at once.

  // How far the hair stands out over the skin, in millimetres; below 0 where there is none.
  FourFloats hair_cover(const FourPoints& p) const;
  // The outermost points of the surface in directions (of length 1) from the origin.
  FourPoints surface_points(const FourPoints& directions) const;
  // Outward, of length 1, at points of the surface.
  FourPoints normals(const FourPoints& p) const;
  // How open points of the surface are to light from all around: 0.25 in a deep fold, 1 on a bulge.
  FourFloats openness(const FourPoints& p, const FourPoints& normals) const;

 private:
  struct Ellipsoid {
    Vec3 center;
    Vec3 radii;
    float blend;  // millimetres over which it blends into the parts before it
  };

  void add_flesh(const HeadLook& look);
  void add_hair(const HeadLook& look);
  // Millimetres from skin or hair, negative inside; exact only near the surface.
  FourFloats distances(const FourPoints& p) const;
  FourFloats skin_distances(const FourPoints& p) const;
  FourFloats hair_distances(const FourPoints& p) const;
  static FourFloats distances(const Ellipsoid& ellipsoid, const FourPoints& p);
  // On the average head, in the half with x >= 0.
  FourPoints unstretched(const FourPoints& p) const;

  // The half with x >= 0; the other mirrors it.
  std::vector<Ellipsoid> flesh_;
  std::vector<Ellipsoid> hollows_;
  std::vector<Ellipsoid> details_;  // added after the hollows have been carved out
  std::vector<Ellipsoid> hair_;
  Vec3 stretch_;
};

}  // namespace halcyra::virtual_kinect::room
