// Draws surfaces into pictures; what is nearer hides what is farther away.
#pragma once

#include <opencv2/core/mat.hpp>

#include "virtual_kinect/room/light.hpp"
#include "virtual_kinect/room/pinhole.hpp"
#include "virtual_kinect/room/pose.hpp"
#include "virtual_kinect/room/surface.hpp"

namespace halcyra::virtual_kinect::room {

// A colour picture and the distance of what its pixels show. Both have the camera's size.
struct ColorCanvas {
  Pinhole camera;
  cv::Mat color;     // 8-bit B, G, R, X
  cv::Mat nearness;  // float: 1 over the depth in millimetres, 0 where nothing is drawn
};

// Some rows of a colour picture under each source of light alone, at level 1.
struct TwoLightsCanvas {
  Pinhole camera;
  int first_row;     // of the camera's picture
  cv::Mat daylight;  // 8-bit B, G, R, X
  cv::Mat lamp;      // likewise
  cv::Mat nearness;  // as above
};

// The same for the depth camera, with the light that comes back to it.
struct DepthCanvas {
  Pinhole camera;
  cv::Mat nearness;  // as above
  cv::Mat echo;      // float, 0 to 1: the share of the sensor's light that the surface sends back;
                     // what distance takes away is left out
};

// Draws a painted surface. What is nearer than 200 mm is left out. `wrap` is that of shade_parts.
void draw(const ColorCanvas& canvas, const Surface& surface, const Pose& pose,
          const LightLevels& levels, float wrap);

// The same without `wrap`. The light of the lamp and of the day are computed in one pass.
void draw(const TwoLightsCanvas& canvas, const Surface& surface, const Pose& pose);

void draw(const DepthCanvas& canvas, const Surface& surface, const Pose& pose);

// A rectangle of the picture that holds all pixels of a surface; empty where it is out of view.
cv::Rect extent(const Pinhole& camera, const Surface& surface, const Pose& pose);

}  // namespace halcyra::virtual_kinect::room
