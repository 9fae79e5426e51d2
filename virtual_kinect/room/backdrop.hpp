// The empty room, drawn once in advance.
#pragma once

#include <opencv2/core/mat.hpp>

#include "virtual_kinect/room/light.hpp"

namespace halcyra::virtual_kinect::room {

// The colour pictures have the size of kColorCamera, the others that of kDepthCamera.
struct Backdrop {
  // 8-bit B, G, R, X: the room under one source of light alone, at level 1.
  cv::Mat daylight;
  cv::Mat lamp;
  cv::Mat color_nearness;  // as in ColorCanvas; of the colour pictures
  cv::Mat depth_nearness;  // as in DepthCanvas
  cv::Mat depth_echo;
};

Backdrop draw_backdrop();

// Writes the colour picture under both sources, 8-bit B, G, R, X, to `lit`.
void lit_backdrop(const Backdrop& backdrop, const LightLevels& levels, cv::Mat& lit);

}  // namespace halcyra::virtual_kinect::room
