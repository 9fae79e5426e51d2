#include "virtual_kinect/room/head_shape.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kNoSurface = 1e6F;

FourFloats magnitudes(const FourFloats& a) { return most(a, -a); }

FourFloats smooth_min(const FourFloats& a, const FourFloats& b, float blend) {
  const FourFloats h = most(blend - magnitudes(a - b), FourFloats{}) / blend;
  return least(a, b) - 0.25F * blend * h * h;
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

FourFloats HeadShape::distances(const Ellipsoid& ellipsoid, const FourPoints& p) {
  const FourPoints n = divide(p - ellipsoid.center, ellipsoid.radii);
  const FourPoints m = divide(n, ellipsoid.radii);
  const FourFloats k = lengths(n);
  return k * (k - 1.0F) / most(lengths(m), FourFloats{} + 1e-6F);
}

FourFloats HeadShape::skin_distances(const FourPoints& p) const {
  FourFloats d = FourFloats{} + kNoSurface;
  for (const Ellipsoid& part : flesh_) d = smooth_min(d, distances(part, p), part.blend);
  for (const Ellipsoid& hollow : hollows_) d = -smooth_min(-d, distances(hollow, p), hollow.blend);
  for (const Ellipsoid& part : details_) d = smooth_min(d, distances(part, p), part.blend);
  return d;
}

FourFloats HeadShape::hair_distances(const FourPoints& p) const {
  FourFloats d = FourFloats{} + kNoSurface;
  for (const Ellipsoid& lock : hair_) d = smooth_min(d, distances(lock, p), lock.blend);
  return d;
}

FourPoints HeadShape::unstretched(const FourPoints& p) const {
  return divide({magnitudes(p.x), p.y, p.z}, stretch_);
}

FourFloats HeadShape::distances(const FourPoints& p) const {
  const FourPoints q = unstretched(p);
  return smooth_min(skin_distances(q), hair_distances(q), 4.0F);
}

FourFloats HeadShape::hair_cover(const FourPoints& p) const {
  const FourPoints q = unstretched(p);
  return skin_distances(q) - hair_distances(q);
}

// Searches from outside inwards, so that the nose hides what is behind it.
FourPoints HeadShape::surface_points(const FourPoints& directions) const {
  FourFloats radii = FourFloats{} + 190.0F;
  FourInts searching = ~FourInts{};  // all bits of a lane, until its point is found
  for (int step = 0; step < 24; ++step) {
    const FourFloats d = distances(directions * radii);
    searching &= magnitudes(d) >= 0.05F;
    radii = searching ? most(radii - 0.9F * d, FourFloats{} + 10.0F) : radii;
  }
  return directions * radii;
}

FourPoints HeadShape::normals(const FourPoints& p) const {
  constexpr float kStep = 0.7F;
  const FourFloats a = distances(p + Vec3{kStep, -kStep, -kStep});
  const FourFloats b = distances(p + Vec3{-kStep, -kStep, kStep});
  const FourFloats c = distances(p + Vec3{-kStep, kStep, -kStep});
  const FourFloats d = distances(p + Vec3{kStep, kStep, kStep});
  const FourPoints slopes = {a - b - c + d, -a - b + c + d, -a + b - c + d};
  return slopes * (1.0F / most(lengths(slopes), FourFloats{} + 1e-9F));
}

FourFloats HeadShape::openness(const FourPoints& p, const FourPoints& normals) const {
  FourFloats hidden{};
  float weight = 0.5F;
  for (const float reach : {5.0F, 12.0F, 26.0F}) {
    const FourFloats open = distances(p + normals * (FourFloats{} + reach)) / reach;
    hidden += weight * most(FourFloats{}, 1.0F - open);
    weight *= 0.75F;
  }
  return most(FourFloats{} + 0.25F, 1.0F - 0.9F * hidden);
}

}  // namespace halcyra::virtual_kinect::room
