#include "virtual_kinect/room/obstacle.hpp"

#include <cmath>

namespace halcyra::virtual_kinect::room {

namespace {

// Distance from a box; 0 inside.
float distance(const Obstacle& obstacle, const Vec3& p) {
  const auto beyond = [](float offset, float half) {
    return std::fmax(std::fabs(offset) - half, 0.0F);
  };
  return length({beyond(p.x - obstacle.center.x, obstacle.half_sizes.x),
                 beyond(p.y - obstacle.center.y, obstacle.half_sizes.y),
                 beyond(p.z - obstacle.center.z, obstacle.half_sizes.z)});
}

}  // namespace

float openness_among(const std::vector<Obstacle>& obstacles, const Vec3& p, const Vec3& normal) {
  float open = 1.0F;
  float weight = 0.34F;
  for (const float reach : {30.0F, 90.0F, 240.0F}) {
    const Vec3 probe = p + normal * reach;
    float nearest = reach;
    for (const Obstacle& obstacle : obstacles) {
      nearest = std::fmin(nearest, distance(obstacle, probe));
    }
    open -= weight * (1.0F - nearest / reach);
    weight *= 0.85F;
  }
  return std::fmax(open, 0.2F);
}

}  // namespace halcyra::virtual_kinect::room
