#include "virtual_kinect/room/face_paint.hpp"

#include <cmath>

#include "virtual_kinect/room/value_noise.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kHairInfrared = 0.42F;

void cover(Reflectance& r, const Vec3& color, float infrared, float share) {
  const float s = clamp01(share);
  if (s == 0.0F) return;
  r.color = mix(r.color, color, s);
  r.infrared = mix(r.infrared, infrared, s);
}

// 1 inside an ellipse around (x, y), falling to 0 over its `rim`, a share of its size.
float spot(const Vec3& q, float x, float y, float width, float height, float rim) {
  const float dx = (q.x - x) / width;
  const float dy = (q.y - y) / height;
  return 1.0F - smoothstep(1.0F - rim, 1.0F + rim, std::sqrt(dx * dx + dy * dy));
}

// 1 on a line, falling to 0 within `width` of it.
float stroke(float distance, float width) {
  return 1.0F - smoothstep(0.5F * width, width, std::fabs(distance));
}

}  // namespace

std::vector<Reflectance> FacePaint::at(const Places& points,
                                       const std::vector<float>& hair_cover) const {
  std::vector<float> shares(points.size());
  Places with_skin;
  Places with_hair;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Vec3 p = points[i];
    shares[i] = hair_share(p, hair_cover[i]);
    if (shares[i] < 1.0F) with_skin.add(p);
    if (shares[i] > 0.0F) with_hair.add(p);
  }
  const std::vector<Reflectance> all_skin = skin(with_skin);
  const std::vector<Reflectance> all_hair = hair(with_hair);
  auto next_skin = all_skin.begin();
  auto next_hair = all_hair.begin();
  std::vector<Reflectance> all;
  all.reserve(points.size());
  for (const float share : shares) {
    all.push_back(share < 1.0F ? *next_skin++ : *next_hair);
    if (share <= 0.0F) continue;
    cover(all.back(), next_hair->color, next_hair->infrared, share);
    ++next_hair;
  }
  return all;
}

float FacePaint::hair_share(const Vec3& p, float hair_cover) const {
  constexpr float kRaggedness = 2.5F;  // millimetres
  constexpr float kSkinShows = -1.5F;
  constexpr float kHairHides = 2.0F;
  if (hair_cover > kHairHides + kRaggedness) return 1.0F;
  if (hair_cover < kSkinShows - kRaggedness) return 0.0F;
  const float ragged = hair_cover + kRaggedness * value_noise(p * 0.16F, look_.seed + 5);
  return smoothstep(kSkinShows, kHairHides, ragged);
}

std::vector<Reflectance> FacePaint::hair(const Places& points) const {
  const bool wavy = look_.hair_cut == HairCut::kLongWavy;
  std::vector<float> sway(points.size(), 0.0F);
  if (wavy) sway = scaled(value_noise(points * 0.03F, look_.seed + 9), 9.0F);
  std::vector<float> around(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    around[i] = std::atan2(points.x[i] + sway[i], points.z[i] - 15.0F) * 14.0F;
  }
  const auto even = [&](float z) { return std::vector<float>(points.size(), z); };
  const std::vector<float> locks =
      value_noise(Places{around, scaled(points.y, 0.03F), even(0.0F)}, look_.seed + 6);
  const std::vector<float> fine = value_noise(
      Places{scaled(around, 2.7F), scaled(points.y, 0.05F), even(3.0F)}, look_.seed + 7);
  std::vector<Reflectance> all(points.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    const float strands = 0.65F * locks[i] + 0.35F * fine[i];
    all[i] = {look_.hair * (1.0F + 0.34F * strands), kHairInfrared * (1.0F + 0.2F * strands)};
  }
  return all;
}

std::vector<Reflectance> FacePaint::skin(const Places& points) const {
  const std::vector<float> mottle = layered_noise(points * 0.045F, look_.seed);
  const std::vector<float> pores = value_noise(points * 0.45F, look_.seed + 1);
  std::vector<float> lines(points.size(), 0.0F);
  if (look_.wrinkles > 0.0F) {
    lines = value_noise(multiply(points, {0.11F, 0.19F, 0.11F}), look_.seed + 13);
  }
  const float roughness = 0.03F + 0.035F * look_.wrinkles + 0.02F * look_.freckles;
  std::vector<Reflectance> all(points.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    const float tone =
        1.0F + 0.030F * mottle[i] + roughness * pores[i] + 0.045F * look_.wrinkles * lines[i];
    all[i] = skin_of_tone(points[i], tone);
  }
  return all;
}

Reflectance FacePaint::skin_of_tone(const Vec3& p, float tone) const {
  const Vec3 q{p.x / look_.width, p.y / look_.height, p.z};
  Reflectance r{look_.skin * tone, kSkinInfrared};
  const Vec3 m{std::fabs(q.x), q.y, q.z};
  if (q.z < -20.0F) {
    const Vec3 flush = multiply(look_.skin, {1.0F, 0.84F, 0.82F});
    cover(r, flush, kSkinInfrared, 0.55F * spot(m, 43, 34, 22, 17, 0.7F));
    cover(r, flush, kSkinInfrared, 0.5F * spot(m, 0, 36, 14, 11, 0.6F));
    cover(r, look_.skin * 0.84F, kSkinInfrared, 0.6F * spot(m, 30, 15, 17, 6, 0.7F));
    add_freckles(r, p, m);
    add_wrinkles(r, m);
    add_beard(r, q);
    add_lips(r, m);
    add_nostrils(r, m);
    add_brow(r, m);
    add_eye(r, m);
  }
  cover(r, multiply(look_.skin, {0.72F, 0.58F, 0.54F}), kSkinInfrared,
        spot({q.z, q.y, 0.0F}, 8.0F, 12.0F, 7.0F, 15.0F, 0.5F) * smoothstep(70, 78, m.x) * 0.7F);
  if (look_.glasses) add_glasses(r, m);
  return r;
}

void FacePaint::add_freckles(Reflectance& r, const Vec3& p, const Vec3& q) const {
  const float region = spot(q, 24, 26, 44, 20, 0.5F);
  if (look_.freckles <= 0.0F || region <= 0.0F) return;
  const float freckle = value_noise(p * 0.33F, look_.seed + 2);
  cover(r, multiply(look_.skin, {0.80F, 0.66F, 0.56F}), kSkinInfrared,
        look_.freckles * region * smoothstep(0.15F, 0.45F, freckle));
}

void FacePaint::add_wrinkles(Reflectance& r, const Vec3& q) const {
  const Vec3 crease = look_.skin * 0.80F;
  const float forehead = smoothstep(-72, -62, q.y) * (1.0F - smoothstep(-36, -28, q.y));
  if (look_.wrinkles > 0.0F && forehead > 0.0F) {
    const float wave = q.y + 0.0025F * q.x * q.x + 1.5F * value_noise(q * 0.06F, look_.seed + 3);
    const float lines = smoothstep(0.55F, 1.0F, std::sin(wave * 0.55F));
    cover(r, crease, kSkinInfrared, look_.wrinkles * 0.85F * forehead * lines);
  }
  const float fold = q.x - (21.0F + 0.40F * (q.y - 42.0F));
  const float along = smoothstep(36, 44, q.y) * (1.0F - smoothstep(62, 74, q.y));
  cover(r, crease, kSkinInfrared, (0.25F + 0.6F * look_.wrinkles) * along * stroke(fold, 4.0F));
}

void FacePaint::add_beard(Reflectance& r, const Vec3& q) const {
  const float front = smoothstep(-14.0F, -34.0F, q.z + 0.25F * (q.y - 60.0F));
  if (look_.beard <= 0.0F || front <= 0.0F) return;
  const float side = std::fabs(q.x);
  const float edge =
      46.0F - 0.55F * std::fmax(0.0F, side - 24.0F) + 4.0F * value_noise(q * 0.1F, look_.seed + 8);
  const float upper_lip = smoothstep(44, 50, q.y) * (1.0F - smoothstep(30, 36, side));
  const float jaw = smoothstep(edge + 8.0F, edge + 20.0F, q.y);
  const float below_mouth = spot({side, q.y, 0.0F}, 0, 78, 16, 6, 0.5F);
  const float region = std::fmax(0.75F * upper_lip, jaw) * (1.0F - 0.5F * below_mouth) * front;
  if (region <= 0.0F) return;
  const float hairs =
      0.5F + 0.5F * value_noise({q.x * 0.55F, q.y * 0.28F, q.z * 0.55F}, look_.seed + 4);
  const Vec3 color = look_.beard > 0.7F ? look_.hair : mix(look_.skin, look_.hair, 0.75F);
  cover(r, color * (0.55F + 0.75F * hairs), kHairInfrared,
        region * std::fmin(1.0F, look_.beard * (0.55F + 0.85F * hairs)));
}

void FacePaint::add_lips(Reflectance& r, const Vec3& q) const {
  const float half = 25.0F * look_.mouth_width;
  const float t = q.x / half;
  if (t >= 1.15F || q.y < 45.0F || q.y > 85.0F) return;
  const float taper = std::sqrt(std::fmax(0.0F, 1.0F - t * t));
  const float seam = 64.5F - 1.5F * t * t;
  const float bow = 1.6F * std::exp(-t * t * 30.0F);
  const float top = seam - (6.2F * look_.lips * taper - bow);
  const float bottom = seam + 8.2F * look_.lips * taper;
  const float body = smoothstep(top - 1.2F, top + 1.2F, q.y) *
                     (1.0F - smoothstep(bottom - 2.0F, bottom + 1.5F, q.y));
  const float shade = q.y < seam ? 0.86F : 1.0F;
  cover(r, look_.lip_color * shade, 0.55F, 0.9F * body * smoothstep(1.02F, 0.85F, t));
  cover(r, look_.lip_color * 0.35F, 0.35F, stroke(q.y - seam, 1.9F) * smoothstep(1.1F, 0.9F, t));
  cover(r, look_.skin * 0.74F, kSkinInfrared, 0.5F * spot(q, 0, bottom + 4.0F, 15, 3, 0.8F));
}

void FacePaint::add_nostrils(Reflectance& r, const Vec3& q) const {
  const float x = 7.5F * look_.nose_width;
  cover(r, look_.skin * 0.30F, 0.35F, 0.9F * spot(q, x, 43.0F, 4.2F, 2.4F, 0.4F));
  const float wing = std::hypot((q.x - 14.0F * look_.nose_width) / 6.5F, (q.y - 38.5F) / 7.5F);
  cover(r, look_.skin * 0.70F, kSkinInfrared,
        0.6F * stroke((wing - 1.0F) * 7.0F, 2.2F) * smoothstep(13, 17, q.x / look_.nose_width));
}

void FacePaint::add_brow(Reflectance& r, const Vec3& q) const {
  const float t = (q.x - 10.0F) / 43.0F;
  if (t <= 0.0F || t >= 1.0F) return;
  const float middle =
      -15.0F - look_.brow_height - 6.5F * std::sin(kPi * std::pow(t, 0.8F) * 0.86F);
  const float half = 4.4F * look_.brow_weight * smoothstep(0.0F, 0.12F, t) * (1.05F - 0.75F * t);
  const float inside =
      1.0F - smoothstep(0.6F, 1.25F, std::fabs(q.y - middle) / std::fmax(half, 0.4F));
  if (inside <= 0.0F) return;
  const float hairs = value_noise({q.x * 0.5F - q.y * 0.5F, q.y * 0.12F, 0.0F}, look_.seed + 12);
  cover(r, look_.brows, kHairInfrared, inside * (0.85F + 0.25F * hairs));
}

void FacePaint::add_eye(Reflectance& r, const Vec3& q) const {
  const float x = q.x - 31.0F * look_.eye_distance;
  const float y = q.y - 3.5F;
  const float half = 15.5F;
  const float t = x / half;
  if (std::fabs(t) >= 1.25F || std::fabs(y) > 25.0F) return;
  const float arch = std::fmax(0.0F, 1.0F - t * t);
  const float upper = -6.4F * look_.eye_size * std::pow(arch, 0.75F) - 0.6F * t;
  const float lower = 4.6F * look_.eye_size * arch - 0.6F * t;
  const float reach = 1.0F - smoothstep(0.95F, 1.25F, std::fabs(t));
  cover(r, look_.skin * 0.66F, kSkinInfrared, 0.65F * reach * stroke(y - upper + 5.0F, 2.4F));
  cover(r, look_.skin * 0.80F, kSkinInfrared,
        0.5F * reach * smoothstep(upper - 8.0F, upper - 1.0F, y) * smoothstep(upper + 2, upper, y));
  cover(r, look_.skin * 0.72F, kSkinInfrared, 0.5F * reach * stroke(y - lower - 2.0F, 2.5F));
  const float open = smoothstep(upper - 0.6F, upper + 0.6F, y) *
                     smoothstep(lower + 0.6F, lower - 0.6F, y) *
                     (std::fabs(t) < 1.0F ? 1.0F : 0.0F);
  Reflectance ball{{0.86F, 0.84F, 0.82F}, 0.5F};
  cover(ball, {0.70F, 0.55F, 0.52F}, 0.5F, smoothstep(0.6F, 1.0F, std::fabs(t)));
  const float from_iris = std::hypot(x, y + 0.6F);
  cover(ball, look_.iris * 0.45F, 0.3F, smoothstep(7.1F, 6.3F, from_iris));
  cover(ball, look_.iris, 0.35F, smoothstep(6.0F, 5.0F, from_iris));
  cover(ball, {0.04F, 0.03F, 0.03F}, 0.08F, smoothstep(3.1F, 2.4F, from_iris));
  cover(ball, {0.25F, 0.20F, 0.18F}, 0.3F, 0.6F * smoothstep(upper + 3.6F, upper, y));
  cover(ball, {1.0F, 1.0F, 1.0F}, 0.9F, smoothstep(1.7F, 0.9F, std::hypot(x + 2.2F, y + 2.6F)));
  cover(r, ball.color, ball.infrared, open);
  const float lash = stroke(y - upper, 2.0F) * (1.0F - smoothstep(1.0F, 1.12F, std::fabs(t)));
  cover(r, look_.brows * 0.35F, 0.2F, lash);
}

void FacePaint::add_glasses(Reflectance& r, const Vec3& q) const {
  const Vec3 rim_color = look_.skin * 0.30F;
  const float dx = (q.x - 31.0F) / 24.0F;
  const float dy = (q.y - 5.0F) / 18.5F;
  const float ring =
      std::pow(std::pow(std::fabs(dx), 3.0F) + std::pow(std::fabs(dy), 3.0F), 0.333F);
  if (q.z < -35.0F) {
    cover(r, {0.95F, 0.97F, 1.0F}, 0.7F, 0.05F * smoothstep(1.0F, 0.95F, ring));
    cover(r, rim_color, 0.1F, stroke((ring - 1.0F) * 21.0F, 3.2F));
    cover(r, rim_color, 0.1F, 0.7F * stroke(q.y - 1.0F, 1.8F) * smoothstep(8.0F, 6.0F, q.x));
  }
  const float temple = smoothstep(-62, -58, q.z) * (1.0F - smoothstep(4, 8, q.z));
  cover(r, rim_color, 0.1F, temple * stroke(q.y + 2.0F, 2.4F) * smoothstep(50, 54, q.x));
}

}  // namespace halcyra::virtual_kinect::room
