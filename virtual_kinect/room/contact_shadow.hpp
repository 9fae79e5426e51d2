// The shadow of a person on the floor around their feet.
#pragma once

#include <opencv2/core/mat.hpp>

#include "virtual_kinect/room/person_model.hpp"

namespace halcyra::virtual_kinect::room {

// The part of the picture of kColorCamera that the shadow may reach; empty where it is out of view.
cv::Rect shadow_area(const Posture& posture);

// Darkens the floor in an 8-bit B, G, R, X picture of kColorCamera, before people are drawn.
// `nearness` is that of the empty room (see ColorCanvas).
void add_contact_shadow(cv::Mat& picture, const cv::Mat& nearness, const Posture& posture);

}  // namespace halcyra::virtual_kinect::room
