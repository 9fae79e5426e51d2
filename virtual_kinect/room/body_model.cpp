#include "virtual_kinect/room/body_model.hpp"

#include <cmath>
#include <vector>

#include "virtual_kinect/room/shapes.hpp"
#include "virtual_kinect/room/value_noise.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float skin_infrared = 0.62F;
constexpr float trousers_infrared = 0.45F;

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

Reflectance cloth(const Vec3& color, float infrared, const Vec3& p, std::uint32_t seed) {
  const float threads = std::sin(p.x * 0.42F) * std::sin(p.y * 0.42F) * std::cos(p.z * 0.42F);
  const float weave = 0.055F * threads + 0.012F * value_noise(p * 0.06F, seed);
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
  paint(neck, {64, 64}, [&head](float, float, const Vec3& p) {
    return Reflectance{head.skin * (0.95F + 0.03F * layered_noise(p * 0.04F, head.seed)),
                       skin_infrared};
  });
  neck.gloss = 0.08F;
  return neck;
}

// Where the neckline lies: its lowest height at a place beside the middle.
float neckline(Clothing clothing, float side) {
  switch (clothing) {
    case Clothing::shirt:
      return -1395.0F - 1.7F * side;
    case Clothing::sweater:
      return -1404.0F - 0.0075F * side * side;
    case Clothing::jacket:
      break;
  }
  return -1180.0F - 3.0F * side;
}

Reflectance upper_cloth(const BodyLook& look, const HeadLook& head, const Vec3& p, bool front) {
  const float side = std::fabs(p.x);
  const float line = neckline(look.clothing, side);
  Reflectance r = cloth(look.top, look.top_infrared, p, head.seed + 20);
  if (look.clothing == Clothing::sweater) {
    const float rib = std::sin(p.y * 0.16F + 0.6F * std::sin(p.x * 0.11F));
    r.color = r.color * (1.0F + 0.03F * rib);
  }
  if (!front) {
    return r;
  }
  if (look.clothing == Clothing::jacket && p.y < line) {
    r = cloth(look.accent, 0.7F, p, head.seed + 21);
    const float button = std::hypot(p.x, std::fmod(p.y + 2000.0F, 95.0F) - 47.0F);
    r.color = r.color * (button < 6.0F ? 0.8F : 1.0F) * (side < 2.5F ? 0.86F : 1.0F);
  } else if (look.clothing == Clothing::jacket && p.y < line + 60.0F) {
    r.color = r.color * (p.y > line + 52.0F || p.y < line + 6.0F ? 0.62F : 1.12F);  // lapel
  } else if (look.clothing == Clothing::shirt) {
    const float button = std::hypot(p.x, std::fmod(p.y + 2000.0F, 92.0F) - 46.0F);
    r.color =
        button < 6.0F ? look.accent : r.color * (std::fabs(side - 17.0F) < 2.0F ? 0.82F : 1.0F);
    const float collar = p.y - line;
    if (collar < 0.0F) {
      r = {head.skin * 0.97F, skin_infrared};
    } else if (collar < 42.0F) {
      r.color = look.top * (collar > 37.0F || collar < 4.0F ? 0.72F : 1.14F);
    }
  } else if (look.clothing == Clothing::sweater) {
    const float edge = p.y - line;
    if (edge < -26.0F) {
      r = {head.skin * 0.97F, skin_infrared};
    } else if (edge < 0.0F) {
      r.color = look.accent * (edge > -3.0F || edge < -22.0F ? 0.75F : 1.0F);
    }
  }
  return r;
}

Surface make_torso(const BodyLook& look, const HeadLook& head) {
  std::vector<Ring> rings = {
      {{0, -1482, 12}, 62, 58},  {{0, -1462, 9}, 92, 66},   {{0, -1442, 8}, 138, 76},
      {{0, -1418, 7}, 182, 86},  {{0, -1375, 5}, 200, 100}, {{0, -1300, 0}, 197, 116},
      {{0, -1200, 0}, 182, 118}, {{0, -1060, 0}, 164, 112}, {{0, -950, 2}, 178, 122},
      {{0, -880, 4}, 190, 130},  {{0, -825, 4}, 190, 130},  {{0, -818, 4}, 90, 60}};
  stretch_widths(rings, look.shoulders, look.girth);
  Surface torso = make_tube(rings, 73, 61);
  add_folds(torso, 2.0F, {0.011F, 0.006F, 0.011F}, head.seed + 30);
  for (std::size_t i = 0; i < torso.points.size(); ++i) {
    const Vec3& p = torso.points[i];
    const float armpit = smoothstep(120, 185, std::fabs(p.x)) * smoothstep(-1390, -1300, p.y);
    const float below_head =
        (1.0F - smoothstep(-1480, -1400, p.y)) * (1.0F - smoothstep(80, 150, std::fabs(p.x)));
    torso.openness[i] *= (1.0F - 0.4F * armpit) * (1.0F - 0.35F * below_head);
  }
  paint(torso, {640, 512},
        [&](float, float, const Vec3& p) { return upper_cloth(look, head, p, p.z < 0.0F); });
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
  paint(limb, {128, 256},
        [&](float, float, const Vec3& p) { return cloth(color, infrared, p, seed + 1); });
  return limb;
}

Surface make_hand(const Vec3& skin) {
  Surface hand = make_tube({{{0, 505, -48}, 22, 20},
                            {{0, 540, -54}, 24, 34},
                            {{0, 590, -60}, 22, 42},
                            {{0, 640, -66}, 18, 34},
                            {{0, 685, -70}, 12, 22},
                            {{0, 700, -71}, 2, 4}},
                           21, 17);
  paint(hand, {32, 64}, [&skin](float, float, const Vec3& p) {
    const float finger = p.y > 600.0F && std::sin(p.z * 0.33F) > 0.86F ? 0.78F : 1.0F;
    return Reflectance{skin * (0.96F * finger), skin_infrared};
  });
  return hand;
}

Surface make_shoe(const Vec3& color) {
  Surface shoe = make_cushion({0, 432, -60}, {46, 42, 128});
  paint(shoe, {64, 64}, [&color](float, float, const Vec3& p) {
    return Reflectance{color * (p.y > 458.0F ? 0.5F : 1.0F), 0.3F};
  });
  return shoe;
}

}  // namespace

BodyModel make_body(const BodyLook& look, const HeadLook& head) {
  BodyModel body;
  body.neck = make_neck(head);
  body.torso = make_torso(look, head);
  body.arm = make_limb({{{-14, -20, 0}, 12, 16},
                        {{-12, -12, 0}, 32, 42},
                        {{-3, 20, 0}, 47, 56},
                        {{5, 100, 2}, 52, 57},
                        {{6, 270, 4}, 44, 48},
                        {{3, 330, -4}, 43, 46},
                        {{0, 440, -30}, 37, 39},
                        {{0, 515, -50}, 33, 33},
                        {{0, 520, -50}, 20, 20}},
                       look.girth, look.top, look.top_infrared, head.seed + 40);
  body.hand = make_hand(head.skin);
  body.thigh = make_limb({{{0, 0, 4}, 70, 84},
                          {{0, 80, 2}, 84, 92},
                          {{0, 250, 0}, 70, 74},
                          {{0, thigh_length, 0}, 58, 62},
                          {{0, thigh_length + 20, 0}, 52, 56}},
                         look.girth, look.trousers, trousers_infrared, head.seed + 50);
  body.shin = make_limb({{{0, -30, 0}, 54, 58},
                         {{0, 60, 4}, 58, 64},
                         {{0, 200, 6}, 54, 58},
                         {{0, 400, 4}, 50, 56},
                         {{0, 420, 4}, 48, 54}},
                        look.girth, look.trousers, trousers_infrared, head.seed + 60);
  body.shoe = make_shoe(look.shoes);
  return body;
}

}  // namespace halcyra::virtual_kinect::room
