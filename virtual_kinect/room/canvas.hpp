// Draws surfaces into pictures, the nearer over the farther.
#pragma once

#include <opencv2/core/mat.hpp>

#include "virtual_kinect/room/light.hpp"
#include "virtual_kinect/room/pinhole.hpp"
#include "virtual_kinect/room/pose.hpp"
#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

// A colour picture and how near each of its pixels is.
struct ColorCanvas {
  Pinhole camera;
  cv::Mat color;     // 8-bit B, G, R, X
  cv::Mat nearness;  // float; 1 over the depth in millimetres, 0 for nothing
};

// What the depth camera sees.
struct DepthCanvas {
  Pinhole camera;
  cv::Mat nearness;  // float; as above
  cv::Mat echo;      // float; share of the sensor's light that comes back, before distance
};

// `wrap` as for shade_parts.
void draw(const ColorCanvas& canvas, const Surface& surface, const Pose& pose,
          const LightLevels& levels, float wrap);

void draw(const DepthCanvas& canvas, const Surface& surface, const Pose& pose);

// The pixels that a surface may cover; empty where it is out of view.
cv::Rect extent(const Pinhole& camera, const Surface& surface, const Pose& pose);

}  // namespace halcyra::virtual_kinect::room
