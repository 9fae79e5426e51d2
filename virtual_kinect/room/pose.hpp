// Where a part is in the room and how it is turned.
#pragma once

#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

struct Pose {
  Vec3 x_axis{1.0F, 0.0F, 0.0F};
  Vec3 y_axis{0.0F, 1.0F, 0.0F};
  Vec3 z_axis{0.0F, 0.0F, 1.0F};
  Vec3 origin;

  Vec3 turn(const Vec3& v) const { return x_axis * v.x + y_axis * v.y + z_axis * v.z; }
  Vec3 place(const Vec3& v) const { return turn(v) + origin; }
};

// Applies `inner` first, then `outer`.
inline Pose operator*(const Pose& outer, const Pose& inner) {
  return {outer.turn(inner.x_axis), outer.turn(inner.y_axis), outer.turn(inner.z_axis),
          outer.place(inner.origin)};
}

inline Pose shifted(const Vec3& origin) {
  Pose pose;
  pose.origin = origin;
  return pose;
}

// At +90 degrees, a part that faced the camera (-z) faces the right edge of the picture.
inline Pose turned_about_y(float degrees) {
  const float c = std::cos(radians(degrees));
  const float s = std::sin(radians(degrees));
  return {{c, 0.0F, s}, {0.0F, 1.0F, 0.0F}, {-s, 0.0F, c}, {}};
}

// Positive degrees: a part that faces the camera looks down.
inline Pose turned_about_x(float degrees) {
  const float c = std::cos(radians(degrees));
  const float s = std::sin(radians(degrees));
  return {{1.0F, 0.0F, 0.0F}, {0.0F, c, s}, {0.0F, -s, c}, {}};
}

// Positive degrees: the upper end tilts to the right.
inline Pose turned_about_z(float degrees) {
  const float c = std::cos(radians(degrees));
  const float s = std::sin(radians(degrees));
  return {{c, s, 0.0F}, {-s, c, 0.0F}, {0.0F, 0.0F, 1.0F}, {}};
}

}  // namespace halcyra::virtual_kinect::room
