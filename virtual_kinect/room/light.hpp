// The light in the room.
#pragma once

#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// Factors on the displayed brightness of each source; 0 is off.
struct LightLevels {
  float daylight = 1.0F;
  float lamp = 1.0F;
};

constexpr Vec3 kLampPosition{1560.0F, -330.0F, 3300.0F};

// Displayed brightness (red, green, blue; about 0 to 1) of a white surface under each source alone,
// at level 1.
struct ShadeParts {
  Vec3 daylight;
  Vec3 lamp;
};

// For a point of the room with an outward normal of length 1. `openness` is that of Surface. With
// `wrap` above 0 light creeps round to the side that is turned away, as it does on skin and cloth.
ShadeParts shade_parts(const Vec3& point, const Vec3& normal, float openness, float wrap);

inline Vec3 combined(const ShadeParts& parts, const LightLevels& levels) {
  return parts.daylight * levels.daylight + parts.lamp * levels.lamp;
}

// The highlight, 0 to 1, that the camera sees on a glossy surface in daylight.
float highlight(const Vec3& point, const Vec3& normal);

}  // namespace halcyra::virtual_kinect::room
