#include "virtual_kinect/room/head_shape.hpp"

#include <algorithm>
#include <cmath>

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kNoSurface = 1e6F;

float smooth_min(float a, float b, float blend) {
  const float h = std::max(blend - std::fabs(a - b), 0.0F) / blend;
  return std::min(a, b) - 0.25F * blend * h * h;
}

}  // namespace

HeadShape::HeadShape(const HeadLook& look) : stretch_{look.width, look.height, 1.0F} {
  add_flesh(look);
  add_hair(look);
}

void HeadShape::add_flesh(const HeadLook& look) {
  const float jaw = look.jaw;
  const float nose = look.nose;
  const float eye = 31.0F * look.eye_distance;
  flesh_ = {
      {{0, -36, 16}, {75, 84, 94}, 1},                  // skull
      {{0, -40, -42}, {61, 46, 43}, 22},                // forehead
      {{0, 28, -28}, {61, 72, 58}, 25},                 // middle of face
      {{0, 62, -22}, {55 * jaw, 40, 50}, 22},           // jaw
      {{0, 93, -64}, {23 * look.chin, 15, 19}, 18},     // chin
      {{43 * look.cheeks, 30, -62}, {21, 19, 21}, 18},  // cheekbone
      {{27, -17, -81}, {23, 7, 9}, 14},                 // brow ridge
      {{0, 62, -76}, {31, 23, 19}, 16},                 // muzzle
  };
  hollows_ = {
      {{eye, 3, -99}, {20, 12, 14}, 14},
      {{58, 66, -84}, {11, 26, 10}, 16},
  };
  details_ = {
      {{0, 6, -83 - 5 * nose}, {7, 27, 11}, 10},                           // bridge
      {{0, 23, -87 - 9 * nose}, {8 * look.nose_width, 17, 11}, 12},        // its lower end
      {{0, 36, -92 - 10 * nose}, {10 * look.nose_width, 9, 12}, 12},       // tip
      {{11 * look.nose_width, 39, -90 - 3 * nose}, {8, 7.5F, 10}, 6},      // wing
      {{eye, 3, -78}, {13.5F, 12.0F, 12.0F}, 3},                           // eyeball
      {{eye, -2, -80}, {15.5F, 9.5F, 11.5F}, 5},                           // upper lid
      {{0, 60, -91}, {22 * look.mouth_width, 4.5F * look.lips, 6}, 6},     // upper lip
      {{0, 69.5F, -89}, {19 * look.mouth_width, 5.0F * look.lips, 7}, 5},  // lower lip
      {{79, 14, 14}, {7, 31, 19}, 6},                                      // ear
  };
}

void HeadShape::add_hair(const HeadLook& look) {
  switch (look.hair_cut) {
    case HairCut::kShortSides:
      hair_ = {{{0, -48, 18}, {80, 85, 99}, 1}, {{0, -92, -40}, {50, 26, 42}, 24}};
      break;
    case HairCut::kLongWavy:
      hair_ = {{{0, -50, 22}, {88, 88, 102}, 1},
               {{64, 20, 34}, {32, 90, 62}, 30},
               {{66, 60, 10}, {22, 60, 40}, 20},
               {{40, -79, -53}, {41, 34, 31}, 24},
               {{0, 60, 66}, {70, 90, 52}, 30}};
      break;
    case HairCut::kBald:
      hair_ = {{{66, 6, 44}, {16, 34, 40}, 1}};
      break;
  }
}

float HeadShape::distance(const Ellipsoid& ellipsoid, const Vec3& p) {
  const Vec3 q = p - ellipsoid.center;
  const Vec3 n{q.x / ellipsoid.radii.x, q.y / ellipsoid.radii.y, q.z / ellipsoid.radii.z};
  const Vec3 m{n.x / ellipsoid.radii.x, n.y / ellipsoid.radii.y, n.z / ellipsoid.radii.z};
  const float k = length(n);
  return k * (k - 1.0F) / std::max(length(m), 1e-6F);
}

float HeadShape::skin_distance(const Vec3& p) const {
  float d = kNoSurface;
  for (const Ellipsoid& part : flesh_) d = smooth_min(d, distance(part, p), part.blend);
  for (const Ellipsoid& hollow : hollows_) d = -smooth_min(-d, distance(hollow, p), hollow.blend);
  for (const Ellipsoid& part : details_) d = smooth_min(d, distance(part, p), part.blend);
  return d;
}

float HeadShape::hair_distance(const Vec3& p) const {
  float d = kNoSurface;
  for (const Ellipsoid& lock : hair_) d = smooth_min(d, distance(lock, p), lock.blend);
  return d;
}

float HeadShape::distance(const Vec3& p) const {
  const Vec3 q{std::fabs(p.x) / stretch_.x, p.y / stretch_.y, p.z / stretch_.z};
  return smooth_min(skin_distance(q), hair_distance(q), 4.0F);
}

float HeadShape::hair_cover(const Vec3& p) const {
  const Vec3 q{std::fabs(p.x) / stretch_.x, p.y / stretch_.y, p.z / stretch_.z};
  return skin_distance(q) - hair_distance(q);
}

// Searches from outside inwards, so that the nose hides what is behind it.
Vec3 HeadShape::surface_point(const Vec3& direction) const {
  float radius = 190.0F;
  for (int step = 0; step < 24; ++step) {
    const float d = distance(direction * radius);
    if (std::fabs(d) < 0.05F) break;
    radius = std::max(radius - 0.9F * d, 10.0F);
  }
  return direction * radius;
}

Vec3 HeadShape::normal(const Vec3& p) const {
  constexpr float kStep = 0.7F;
  const float a = distance(p + Vec3{kStep, -kStep, -kStep});
  const float b = distance(p + Vec3{-kStep, -kStep, kStep});
  const float c = distance(p + Vec3{-kStep, kStep, -kStep});
  const float d = distance(p + Vec3{kStep, kStep, kStep});
  return normalized({a - b - c + d, -a - b + c + d, -a + b - c + d});
}

float HeadShape::openness(const Vec3& p, const Vec3& normal) const {
  float hidden = 0.0F;
  float weight = 0.5F;
  for (const float reach : {5.0F, 12.0F, 26.0F}) {
    hidden += weight * std::max(0.0F, 1.0F - distance(p + normal * reach) / reach);
    weight *= 0.75F;
  }
  return std::max(0.25F, 1.0F - 0.9F * hidden);
}

}  // namespace halcyra::virtual_kinect::room
