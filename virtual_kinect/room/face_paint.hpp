// The colours of a head: skin, eyes, brows, lips, beard, glasses, hair.
#pragma once

#include "virtual_kinect/room/looks.hpp"
#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

class FacePaint {
 public:
  explicit FacePaint(const HeadLook& look) : look_(look) {}

  // At a point of the head's surface, in head coordinates (see HeadShape). Hair covers the skin
  // where `hair_cover` (millimetres) is above 0, with a ragged edge.
  Reflectance at(const Vec3& p, float hair_cover) const;

 private:
  Reflectance skin(const Vec3& p) const;
  Reflectance hair(const Vec3& p) const;
  void add_freckles(Reflectance& r, const Vec3& p, const Vec3& q) const;
  void add_wrinkles(Reflectance& r, const Vec3& q) const;
  void add_beard(Reflectance& r, const Vec3& q) const;
  void add_lips(Reflectance& r, const Vec3& q) const;
  void add_nostrils(Reflectance& r, const Vec3& q) const;
  void add_brow(Reflectance& r, const Vec3& q) const;
  void add_eye(Reflectance& r, const Vec3& q) const;
  void add_glasses(Reflectance& r, const Vec3& q) const;

  HeadLook look_;
};

}  // namespace halcyra::virtual_kinect::room
