#include "virtual_kinect/room/body_model.hpp"

#include <cmath>
#include <vector>

#include "virtual_kinect/room/coat.hpp"
#include "virtual_kinect/room/shapes.hpp"
#include "virtual_kinect/room/value_noise.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kTrousersInfrared = 0.45F;

void stretch_widths(std::vector<Ring>& rings, float width, float depth) {
  for (Ring& ring : rings) {
    ring.center.x *= width;
    ring.half_width *= width;
    ring.half_depth *= depth;
  }
}

// Cloth falls in folds: moves the points in and out and darkens the hollows.
void add_folds(Surface& surface, float depth, const Vec3& scale, std::uint32_t seed) {
  for (std::size_t i = 0; i < surface.points.size(); ++i) {
    const float fold = layered_noise(multiply(surface.points[i], scale), seed);
    surface.points[i] = surface.points[i] + surface.normals[i] * (depth * fold);
    surface.openness[i] *= clamp01(0.96F + 0.05F * fold);
  }
  update_normals(surface, true);
}

// How much brighter a woven cloth is at each place than on average, as a share.
std::vector<float> weave_of(const Places& places, std::uint32_t seed) {
  std::vector<float> weave = value_noise(places * 0.2F, seed);
  const std::vector<float> fine = value_noise(places * 0.42F, seed + 5);
  for (std::size_t i = 0; i < weave.size(); ++i) weave[i] = 0.04F * weave[i] + 0.03F * fine[i];
  return weave;
}

Reflectance cloth(const Vec3& color, float infrared, float weave) {
  return {color * (1.0F + weave), infrared * (1.0F + weave)};
}

Surface make_neck(const HeadLook& head) {
  Surface neck = make_tube({{{0, -1590, 18}, 55, 58},
                            {{0, -1550, 16}, 54, 57},
                            {{0, -1505, 14}, 56, 58},
                            {{0, -1470, 10}, 68, 62},
                            {{0, -1435, 4}, 74, 46}},
                           33, 17);
  for (std::size_t i = 0; i < neck.points.size(); ++i) {
    const float below_chin = smoothstep(-1570, -1465, neck.points[i].y);
    const float front = smoothstep(0.0F, -0.6F, neck.normals[i].z);
    neck.openness[i] = mix(0.62F - 0.30F * front, 0.95F, below_chin);
  }
  paint(neck, {64, 64}, [&head](const Texels& texels) {
    const std::vector<float> mottle = layered_noise(texels.points * 0.04F, head.seed);
    return reflectances(texels, [&](std::size_t i) {
      return Reflectance{head.skin * (0.95F + 0.03F * mottle[i]), kSkinInfrared};
    });
  });
  neck.gloss = 0.08F;
  return neck;
}

// The height of the neckline at a distance from the middle.
float neckline(Clothing clothing, float side) {
  switch (clothing) {
    case Clothing::kShirt:
      return -1395.0F - 1.7F * side;
    case Clothing::kSweater:
      return -1404.0F - 0.0075F * side * side;
    case Clothing::kJacket:
      break;
  }
  return -1180.0F - 3.0F * side;
}

// `weave` is that of the garment, `shirt_weave` that of the shirt under a jacket.
Reflectance upper_cloth(const BodyLook& look, const HeadLook& head, const Vec3& p, float weave,
                        float shirt_weave) {
  const bool front = p.z < 0.0F;
  const float side = std::fabs(p.x);
  const float line = neckline(look.clothing, side);
  Reflectance r = cloth(look.top, look.top_infrared, weave);
  if (look.clothing == Clothing::kSweater) {
    r.color = r.color * (1.0F + 0.03F * std::sin(p.x * 0.30F));  // knitted in ribs
  }
  if (!front) return r;
  if (look.clothing == Clothing::kJacket && p.y < line) {
    r = cloth(look.accent, 0.7F, shirt_weave);
    const float button = std::hypot(p.x, std::fmod(p.y + 2000.0F, 95.0F) - 47.0F);
    r.color = r.color * (button < 6.0F ? 0.8F : 1.0F) * (side < 2.5F ? 0.86F : 1.0F);
  } else if (look.clothing == Clothing::kJacket && p.y < line + 60.0F) {
    r.color = r.color * (p.y > line + 52.0F || p.y < line + 6.0F ? 0.62F : 1.12F);  // lapel
  } else if (look.clothing == Clothing::kShirt) {
    const float button = std::hypot(p.x, std::fmod(p.y + 2000.0F, 92.0F) - 46.0F);
    r.color =
        button < 6.0F ? look.accent : r.color * (std::fabs(side - 17.0F) < 2.0F ? 0.82F : 1.0F);
    const float collar = p.y - line;
    if (collar < 0.0F) {
      r = {head.skin * 0.97F, kSkinInfrared};
    } else if (collar < 42.0F) {
      r.color = look.top * (collar > 37.0F || collar < 4.0F ? 0.72F : 1.14F);
    }
  } else if (look.clothing == Clothing::kSweater) {
    const float edge = p.y - line;
    if (edge < -26.0F) {
      r = {head.skin * 0.97F, kSkinInfrared};
    } else if (edge < 0.0F) {
      r.color = look.accent * (edge > -3.0F || edge < -22.0F ? 0.75F : 1.0F);
    }
  }
  return r;
}

Surface make_torso(const BodyLook& look, const HeadLook& head) {
  std::vector<Ring> rings = {
      {{0, -1482, 12}, 62, 58},  {{0, -1462, 9}, 90, 66},   {{0, -1443, 8}, 128, 76},
      {{0, -1422, 7}, 158, 86},  {{0, -1385, 5}, 176, 100}, {{0, -1300, 0}, 182, 116},
      {{0, -1200, 0}, 174, 118}, {{0, -1060, 0}, 158, 110}, {{0, -960, 2}, 166, 118},
      {{0, -890, 4}, 178, 128},  {{0, -845, 4}, 176, 126},  {{0, -838, 4}, 90, 60}};
  stretch_widths(rings, look.shoulders, look.girth);
  Surface torso = make_tube(rings, 73, 61);
  add_folds(torso, 2.0F, {0.011F, 0.006F, 0.011F}, head.seed + 30);
  for (std::size_t i = 0; i < torso.points.size(); ++i) {
    const Vec3& p = torso.points[i];
    const float armpit = smoothstep(120, 185, std::fabs(p.x)) * smoothstep(-1390, -1300, p.y);
    const float below_head =
        (1.0F - smoothstep(-1480, -1400, p.y)) * (1.0F - smoothstep(80, 150, std::fabs(p.x)));
    torso.openness[i] *= (1.0F - 0.12F * armpit) * (1.0F - 0.35F * below_head);
  }
  paint(torso, {640, 512}, [&](const Texels& texels) {
    const std::vector<float> weave = weave_of(texels.points, head.seed + 20);
    const std::vector<float> shirt_weave =
        look.clothing == Clothing::kJacket ? weave_of(texels.points, head.seed + 21) : weave;
    return reflectances(texels, [&](std::size_t i) {
      return upper_cloth(look, head, texels.points[i], weave[i], shirt_weave[i]);
    });
  });
  return torso;
}

Surface make_limb(std::vector<Ring> rings, float girth, const Vec3& color, float infrared,
                  std::uint32_t seed) {
  for (Ring& ring : rings) {
    ring.half_width *= girth;
    ring.half_depth *= girth;
  }
  Surface limb = make_tube(rings, 29, 33);
  add_folds(limb, 1.5F, {0.012F, 0.02F, 0.012F}, seed);
  paint(limb, {128, 256}, [&](const Texels& texels) {
    const std::vector<float> weave = weave_of(texels.points, seed + 1);
    return reflectances(texels, [&](std::size_t i) { return cloth(color, infrared, weave[i]); });
  });
  return limb;
}

Surface make_hand(const Vec3& skin) {
  Surface hand = make_tube({{{0, -10, 0}, 21, 19},
                            {{0, 26, -3}, 23, 32},
                            {{0, 76, -8}, 21, 40},
                            {{0, 118, -12}, 19, 37},
                            {{-4, 156, -20}, 15, 30},
                            {{-8, 180, -27}, 10, 20},
                            {{-10, 190, -30}, 2, 4}},
                           21, 25);
  paint(hand, {64, 128}, [&skin](const Texels& texels) {
    return reflectances(texels, [&](std::size_t i) {
      const Vec3 p = texels.points[i];
      const float across = p.z + 0.12F * p.y;
      const bool between_fingers = p.y > 92.0F && std::sin(across * 0.36F) > 0.86F;
      const float knuckle = 1.0F - 0.06F * smoothstep(8.0F, 2.0F, std::fabs(p.y - 84.0F));
      return Reflectance{skin * ((between_fingers ? 0.90F : 0.96F) * knuckle), kSkinInfrared};
    });
  });
  return hand;
}

Surface make_thumb(const Vec3& skin) {
  Surface thumb = make_tube({{{0, 12, -22}, 8, 9},
                             {{-2, 30, -34}, 12, 14},
                             {{-4, 66, -49}, 11, 11},
                             {{-5, 96, -55}, 9, 9},
                             {{-5, 106, -56}, 2, 2}},
                            13, 13);
  paint(thumb, {16, 32}, [&skin](const Texels& texels) {
    return reflectances(texels, [&](std::size_t i) {
      return Reflectance{skin * (texels.v[i] > 0.86F ? 1.04F : 0.95F), kSkinInfrared};
    });
  });
  return thumb;
}

Surface make_shoe(const Vec3& color) {
  Surface shoe = make_cushion({0, 2, -60}, {46, 42, 128});
  paint(shoe, {64, 64}, [&color](const Texels& texels) {
    return reflectances(texels, [&](std::size_t i) {
      return Reflectance{color * (texels.points.y[i] > 28.0F ? 0.5F : 1.0F), 0.3F};
    });
  });
  return shoe;
}

void add_arm(BodyModel& body, const BodyLook& look, const HeadLook& head) {
  body.upper_arm = make_limb({{{-52, -36, 0}, 10, 20},
                              {{-42, -29, 0}, 32, 40},
                              {{-19, -6, 0}, 50, 53},
                              {{-3, 36, 1}, 53, 57},
                              {{4, 110, 2}, 52, 56},
                              {{4, 220, 2}, 45, 49},
                              {{1, kUpperArmLength - 20, 0}, 41, 45},
                              {{1, kUpperArmLength + 18, 0}, 28, 32}},
                             look.girth, look.top, look.top_infrared, head.seed + 40);
  // A sleeve has no edge where it meets the shoulder, so both are lit alike there.
  for (std::size_t i = 0; i < body.upper_arm.points.size(); ++i) {
    const float share = 0.4F * (1.0F - smoothstep(0.0F, 170.0F, body.upper_arm.points[i].y));
    body.upper_arm.normals[i] =
        normalized(mix(body.upper_arm.normals[i], Vec3{1.0F, -0.2F, 0.0F}, share));
  }
  body.forearm = make_limb({{{0, -34, 2}, 30, 34},
                            {{0, -16, 2}, 40, 44},
                            {{0, 14, 1}, 42, 46},
                            {{0, 60, -2}, 43, 45},
                            {{0, 150, 0}, 37, 38},
                            {{0, kForearmLength - 8, 0}, 33, 32},
                            {{0, kForearmLength, 0}, 22, 21}},
                           look.girth, look.top, look.top_infrared, head.seed + 42);
  body.hand = make_hand(head.skin);
  body.thumb = make_thumb(head.skin);
}

void add_leg(BodyModel& body, const BodyLook& look, const HeadLook& head) {
  body.thigh = make_limb({{{0, 0, 4}, 70, 84},
                          {{0, 80, 2}, 84, 92},
                          {{0, 250, 0}, 70, 74},
                          {{0, kThighLength, 0}, 58, 62},
                          {{0, kThighLength + 26, 0}, 50, 54},
                          {{0, kThighLength + 42, 0}, 28, 30}},
                         look.girth, look.trousers, kTrousersInfrared, head.seed + 50);
  body.shin = make_limb({{{0, -44, 0}, 28, 30},
                         {{0, -26, 0}, 52, 56},
                         {{0, 60, 4}, 58, 64},
                         {{0, 200, 6}, 54, 58},
                         {{0, 400, 4}, 50, 56},
                         {{0, 420, 4}, 48, 54}},
                        look.girth, look.trousers, kTrousersInfrared, head.seed + 60);
  body.shoe = make_shoe(look.shoes);
}

}  // namespace

BodyModel make_body(const BodyLook& look, const HeadLook& head) {
  BodyModel body;
  body.neck = make_neck(head);
  body.torso = make_torso(look, head);
  add_arm(body, look, head);
  add_leg(body, look, head);
  return body;
}

}  // namespace halcyra::virtual_kinect::room
