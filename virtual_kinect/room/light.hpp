// The light in the room.
#pragma once

#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// How bright each source is shown; 1 is its usual level.
struct LightLevels {
  float daylight = 1.0F;
  float lamp = 1.0F;
};

constexpr Vec3 kLampPosition{1560.0F, -330.0F, 3300.0F};

// Displayed brightness per colour (red, green, blue) of a white surface under each source alone.
struct ShadeParts {
  Vec3 daylight;
  Vec3 lamp;
};

// `openness` as of Surface. `wrap` above 0 lets light creep round the edge, as it does in skin.
ShadeParts shade_parts(const Vec3& point, const Vec3& normal, float openness, float wrap);

inline Vec3 combined(const ShadeParts& parts, const LightLevels& levels) {
  return parts.daylight * levels.daylight + parts.lamp * levels.lamp;
}

// Highlight of a glossy surface in daylight, seen by the camera.
float highlight(const Vec3& point, const Vec3& normal);

}  // namespace halcyra::virtual_kinect::room
