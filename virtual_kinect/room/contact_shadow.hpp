// The shade that people throw on the floor around their feet.
#pragma once

#include <opencv2/core/mat.hpp>

#include "virtual_kinect/room/person_model.hpp"

namespace halcyra::virtual_kinect::room {

// Before the person is drawn. `nearness` is the room's alone; only its floor is darkened.
void add_contact_shadow(cv::Mat& picture, const cv::Mat& nearness, const Posture& posture);

}  // namespace halcyra::virtual_kinect::room
