#include "virtual_kinect/room/contact_shadow.hpp"

#include <algorithm>
#include <cmath>

#include "virtual_kinect/room/dimensions.hpp"
#include "virtual_kinect/room/pinhole.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

constexpr float kReach = 620.0F;  // millimetres along the light; across it, 0.55 of that
constexpr float kStrength = 0.55F;
constexpr float kFloorMargin = 40.0F;  // millimetres; the rug on the floor is darkened too

// What is left of the light, 0.45 to 1. The daylight comes from the left and from behind the
// camera, so the shadow falls to the right and away from it.
float shade(float x, float z, const Posture& posture) {
  const float dx = x - posture.x - 110.0F;
  const float dz = z - posture.z - 120.0F;
  const float along = (0.55F * dx + 0.83F * dz) / kReach;
  const float across = (0.83F * dx - 0.55F * dz) / (0.55F * kReach);
  const float t = std::fmax(0.0F, 1.0F - along * along - across * across);
  return 1.0F - kStrength * t * t;
}

}  // namespace

cv::Rect shadow_area(const Posture& posture) {
  const Pinhole& camera = kColorCamera;
  const float far = posture.z + 1.3F * kReach;
  const int top =
      std::clamp(static_cast<int>(camera.row({0, kFloorHeight, far})), 0, camera.height);
  const float near = std::fmax(posture.z - kReach, 500.0F);
  const float left_edge = std::fmin(camera.column({posture.x - kReach, 0, near}),
                                    camera.column({posture.x - kReach, 0, far}));
  const float right_edge = std::fmax(camera.column({posture.x + 1.4F * kReach, 0, near}),
                                     camera.column({posture.x + 1.4F * kReach, 0, far}));
  const int left = std::clamp(static_cast<int>(left_edge), 0, camera.width);
  const int right = std::clamp(static_cast<int>(right_edge), left, camera.width);
  return {left, top, right - left, camera.height - top};
}

void add_contact_shadow(cv::Mat& picture, const cv::Mat& nearness, const Posture& posture) {
  const cv::Rect area = shadow_area(posture);
  for (int row = area.y; row < area.br().y; ++row) {
    for (int column = area.x; column < area.br().x; ++column) {
      const Vec3 ray =
          kColorCamera.ray(static_cast<float>(column) + 0.5F, static_cast<float>(row) + 0.5F);
      const Vec3 p = ray * (1.0F / nearness.ptr<float>(row)[column]);
      if (p.y < kFloorHeight - kFloorMargin) continue;
      const int share = static_cast<int>(256.0F * shade(p.x, p.z, posture));
      uchar* pixel = picture.ptr(row, column);
      for (int i = 0; i < 3; ++i) pixel[i] = static_cast<uchar>(pixel[i] * share >> 8);
    }
  }
}

}  // namespace halcyra::virtual_kinect::room
