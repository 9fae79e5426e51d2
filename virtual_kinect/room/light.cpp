#include "virtual_kinect/room/light.hpp"

#include <algorithm>

namespace halcyra::virtual_kinect::room {

namespace {

// Most of the light comes from a large window to the left, behind the camera.
const Vec3 kToWindow = normalized({-0.50F, -0.42F, -0.76F});
constexpr Vec3 kWindowColor{1.02F, 1.0F, 0.97F};
constexpr Vec3 kSkyColor{0.36F, 0.385F, 0.42F};
constexpr Vec3 kFloorColor{0.25F, 0.22F, 0.19F};
constexpr Vec3 kLampColor{0.62F, 0.45F, 0.25F};
constexpr float kLampReach = 900.0F;
constexpr float kLampSpill = 0.035F;  // lamp light that comes back from the walls

// A display's encoding of light is about its square root.
Vec3 displayed(const Vec3& light) {
  return {std::sqrt(light.x), std::sqrt(light.y), std::sqrt(light.z)};
}

float wrapped(float cosine, float wrap) { return std::fmax(0.0F, (cosine + wrap) / (1.0F + wrap)); }

}  // namespace

ShadeParts shade_parts(const Vec3& point, const Vec3& normal, float openness, float wrap) {
  const float up = 0.5F - 0.5F * normal.y;
  const float direct = 0.80F * wrapped(dot(normal, kToWindow), wrap) * (0.35F + 0.65F * openness);
  const Vec3 ambient = mix(kFloorColor, kSkyColor, up) * openness;
  const Vec3 to_lamp = kLampPosition - point;
  const float distance = length(to_lamp) / kLampReach;
  const float cosine = dot(normal, to_lamp) / std::fmax(length(to_lamp), 1.0F);
  const float near = wrapped(cosine, wrap) / (0.25F + distance * distance);
  const Vec3 lamp = kLampColor * (openness * (near + kLampSpill));
  return {displayed(kWindowColor * direct + ambient), displayed(lamp) * 0.55F};
}

float highlight(const Vec3& point, const Vec3& normal) {
  const Vec3 half = normalized(kToWindow - normalized(point));
  const float cosine = std::fmax(0.0F, dot(normal, half));
  const float squared = cosine * cosine;
  const float eighth = squared * squared * squared * squared;
  return eighth * eighth * squared;
}

}  // namespace halcyra::virtual_kinect::room
