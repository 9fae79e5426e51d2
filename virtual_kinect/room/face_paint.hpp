// The colours of a head: skin, eyes, brows, lips, beard, glasses, hair.
#pragma once

#include <vector>

#include "virtual_kinect/room/coat.hpp"
#include "virtual_kinect/room/looks.hpp"
#include "virtual_kinect/room/places.hpp"

namespace halcyra::virtual_kinect::room {

class FacePaint {
 public:
  explicit FacePaint(const HeadLook& look) : look_(look) {}

  // At points of the head's surface, in head coordinates (see HeadShape). Hair covers the skin
  // where `hair_cover` (millimetres, one for each point) is above 0, with a ragged edge.
  std::vector<Reflectance> at(const Places& points, const std::vector<float>& hair_cover) const;

 private:
  float hair_share(const Vec3& p, float hair_cover) const;
  std::vector<Reflectance> hair(const Places& points) const;
  std::vector<Reflectance> skin(const Places& points) const;
  Reflectance skin_of_tone(const Vec3& p, float tone) const;
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
