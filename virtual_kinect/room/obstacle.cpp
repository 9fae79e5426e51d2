#include "virtual_kinect/room/obstacle.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace halcyra::virtual_kinect::room {

namespace {

float beyond(float offset, float half) { return std::max(std::fabs(offset) - half, 0.0F); }

// The squared distance from a box; 0 inside.
float squared_distance(const Obstacle& obstacle, const Vec3& p) {
  const Vec3 q{beyond(p.x - obstacle.center.x, obstacle.half_sizes.x),
               beyond(p.y - obstacle.center.y, obstacle.half_sizes.y),
               beyond(p.z - obstacle.center.z, obstacle.half_sizes.z)};
  return dot(q, q);
}

}  // namespace

float openness_among(const std::vector<Obstacle>& obstacles, const Vec3& p, const Vec3& normal) {
  float open = 1.0F;
  float weight = 0.34F;
  for (const float reach : {30.0F, 90.0F, 240.0F}) {
    const Vec3 probe = p + normal * reach;
    float least = std::numeric_limits<float>::max();
    for (const Obstacle& obstacle : obstacles) {
      least = std::min(least, squared_distance(obstacle, probe));
    }
    const float nearest = std::min(reach, std::sqrt(least));
    open -= weight * (1.0F - nearest / reach);
    weight *= 0.85F;
  }
  return std::max(open, 0.2F);
}

}  // namespace halcyra::virtual_kinect::room
