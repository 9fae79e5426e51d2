// What the time-of-flight sensor makes of the light that comes back to it.
#pragma once

#include <cstdint>

#include <opencv2/core/mat.hpp>

#include "virtual_kinect/room/canvas.hpp"
#include "virtual_kinect/room/sensor_noise.hpp"

namespace halcyra::virtual_kinect::room {

// Millimetres; 0 outside the sensor's range, at outlines and where too little light returns.
cv::Mat measure_depth(const DepthCanvas& canvas, const SensorNoise& noise, std::uint64_t set);

cv::Mat measure_infrared(const DepthCanvas& canvas, const SensorNoise& noise, std::uint64_t set);

}  // namespace halcyra::virtual_kinect::room
