// Points and directions of the room. Right-handed, as the camera sees it: x to the right, y down, z
// away from the camera; lengths are millimetres.
#pragma once

#include <cmath>

namespace halcyra::virtual_kinect::room {

struct Vec3 {
  float x = 0.0F;
  float y = 0.0F;
  float z = 0.0F;
};

inline Vec3 operator+(const Vec3& a, const Vec3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec3 operator-(const Vec3& a, const Vec3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec3 operator*(const Vec3& a, float s) { return {a.x * s, a.y * s, a.z * s}; }
inline Vec3 multiply(const Vec3& a, const Vec3& b) { return {a.x * b.x, a.y * b.y, a.z * b.z}; }
inline float dot(const Vec3& a, const Vec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vec3 cross(const Vec3& a, const Vec3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline float length(const Vec3& a) { return std::sqrt(dot(a, a)); }
inline Vec3 normalized(const Vec3& a) { return a * (1.0F / std::fmax(length(a), 1e-9F)); }
inline Vec3 mix(const Vec3& a, const Vec3& b, float t) { return a + (b - a) * t; }

inline float mix(float a, float b, float t) { return a + (b - a) * t; }
// 0 for what is not a number.
inline float clamp01(float t) { return t > 0.0F ? (t < 1.0F ? t : 1.0F) : 0.0F; }
// 0 up to `from`, 1 from `to` on, and smooth between them. Falls where `from` is above `to`.
inline float smoothstep(float from, float to, float t) {
  const float s = clamp01((t - from) / (to - from));
  return s * s * (3.0F - 2.0F * s);
}

constexpr float kPi = 3.14159265F;
inline float radians(float angle) { return angle * (kPi / 180.0F); }
inline float degrees(float angle) { return angle * (180.0F / kPi); }

}  // namespace halcyra::virtual_kinect::room
