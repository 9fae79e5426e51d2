// The empty room, drawn once.
#pragma once

#include <opencv2/core/mat.hpp>

#include "virtual_kinect/room/light.hpp"

namespace halcyra::virtual_kinect::room {

struct Backdrop {
  // 8-bit B, G, R, X as displayed under each source alone at its usual level.
  cv::Mat daylight;
  cv::Mat lamp;
  cv::Mat color_nearness;  // as ColorCanvas and DepthCanvas have them
  cv::Mat depth_nearness;
  cv::Mat depth_echo;
};

Backdrop draw_backdrop();

// The colour picture under both sources.
cv::Mat lit_backdrop(const Backdrop& backdrop, const LightLevels& levels);

}  // namespace halcyra::virtual_kinect::room
